#include "app/SpurkisteApp.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "i18n/AppSprache.h"
#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/fenster/Vorleserollen.h"
#include "ui/teile/Papierstil.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

SpurkisteApp::SpurkisteApp(const std::optional<std::string>& ordner)
    : einstellungen_(DateiEinstellungen::ortDerSuite(DateiEinstellungen::kSuite).value_or("")),
      altbestand_(DateiEinstellungen::ortDerSuite(DateiEinstellungen::kAltbestand).value_or("")) {
    AppSprache::richteEin(&einstellungen_, &umgebung_);
    vorleserollen::melde();                  // before any widget is asked what it is
    QApplication::setStyle(new Papierstil);  // the toolkit owns it
    QApplication::setPalette(Papierstil::palette());
    QApplication::setFont(Schrift::mach(12.5));
    sprichNeu();
    sprachabo_ = sprachwechsel_.beobachte([this] { sprichNeu(); });
    Bibliothek::Anschluesse anschluesse{einstellungen_, &altbestand_, umgebung_, hauptfaden_, arbeiter_};
    anschluesse.schreiber = &schreiber_;
    anschluesse.kopierer = &kopierer_;
    anschluesse.papierkorb = &papierkorb_;
    anschluesse.hintergrund = &hintergrund_;
    anschluesse.cacheschreiber = &cacheschreiber_;
    anschluesse.wecker = &wecker_;
    if (ordner) {
        bibliothek_.emplace(anschluesse, *ordner);
    } else {
        bibliothek_.emplace(anschluesse);
    }
}

SpurkisteApp::~SpurkisteApp() {
    for (QWidget* fenster : QApplication::topLevelWidgets()) {
        if (qobject_cast<InhaltsAnsicht*>(fenster) != nullptr) {
            delete fenster;  // when the loop ended while windows were open: they look at the library
        }
    }
    AppSprache::richteEin(nullptr, nullptr);
}

void SpurkisteApp::sprichNeu() {
    baukasten_.sprich(AppSprache::code());
    Papierstil::kleideKurzhilfen();
}

InhaltsAnsicht& SpurkisteApp::oeffneFenster() {
    auto* fenster = new InhaltsAnsicht(
        *bibliothek_, einstellungen_, dateimanager_, sprachwechsel_,
        {&hauptfaden_, &zeilenmacher_, &arbeiter_, std::max(1U, std::thread::hardware_concurrency()) - 1});
    fenster->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(fenster, &InhaltsAnsicht::neuesFensterGewuenscht, qApp, [this] { oeffneFenster(); });
    QObject::connect(fenster, &InhaltsAnsicht::ordnerGewaehlt, qApp,
                     [this](const std::string& ordner) { wechsleOrdner(ordner); });
    fenster->show();
    return *fenster;
}

Einzelinstanz::Ausgang SpurkisteApp::beginne(const Einzelinstanz::Nachricht& nachricht) {
    constexpr std::chrono::seconds geduld(10);  // for a program that is busy with a large library
    QObject::connect(&instanz_, &Einzelinstanz::gerufen, qApp,
                     [this](const auto& ruf) { oeffneDateien(ruf.dateien, ruf.marke); });
    return instanz_.nimm(bibliothek_->ordner().wert(), nachricht, geduld);
}

int SpurkisteApp::laufe() {
    const int ende = QApplication::exec();
    instanz_.verstumme();
    return ende;
}

/// A folder that another program has open comes to the front there, and here everything stays.
void SpurkisteApp::wechsleOrdner(const std::string& ordner) {
    constexpr std::chrono::seconds geduld(2);  // the window stands still for that long
    switch (instanz_.nimm(ordner, {}, geduld)) {
        case Einzelinstanz::Ausgang::unser:
            bibliothek_->wechsleOrdner(ordner);
            break;
        case Einzelinstanz::Ausgang::uebergeben:
            break;
        case Einzelinstanz::Ausgang::stumm:
            bibliothek_->weiseHin("Dieser Ordner ist schon offen, in einem Fenster, das gerade nicht antwortet");
            break;
    }
}

void SpurkisteApp::oeffneDateien(const std::vector<std::string>& pfade, const std::string& marke) {
    auto* fenster = qobject_cast<InhaltsAnsicht*>(QApplication::activeWindow());
    for (QWidget* anderes : QApplication::topLevelWidgets()) {
        if (fenster == nullptr && !anderes->isHidden()) {
            fenster = qobject_cast<InhaltsAnsicht*>(anderes);
        }
    }
    if (fenster == nullptr) {
        fenster = &oeffneFenster();
    }
    if (!marke.empty()) {
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(marke));  // the toolkit takes it from here
    }
    fenster->kommNachVorn();
    fenster->oeffneDateien(pfade);
}

}  // namespace spurkiste
