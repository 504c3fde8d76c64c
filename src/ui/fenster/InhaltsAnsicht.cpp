#include "ui/fenster/InhaltsAnsicht.h"

#include <QCloseEvent>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>
#include <utility>

#include "ui/fenster/Fensterlage.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr QSize kGroesse(1440, 860);
constexpr int kLinksMindestens = 720;
constexpr int kAbstand = 12;
constexpr int kRechtsMindestens = 340;
constexpr int kRechtsIdeal = 370;
constexpr int kRechtsHoechstens = 420;
constexpr std::chrono::milliseconds kGeduld(150);  // what takes no longer shall not flicker

// Keys of the settings that only the window knows.
constexpr std::string_view kFensterlage = "fensterlage";
constexpr std::string_view kTeilerlage = "teilerlage";
constexpr std::string_view kSpaltenbreiten = "spaltenbreiten";

std::string alsBase64(const QByteArray& bytes) {
    return bytes.toBase64().toStdString();
}

QByteArray ausBase64(const std::optional<std::string>& text) {
    return text ? QByteArray::fromBase64(QByteArray::fromStdString(*text)) : QByteArray();
}

}  // namespace

InhaltsAnsicht::InhaltsAnsicht(Bibliothek& bibliothek, Einstellungen& einstellungen, Dateimanager& dateimanager,
                               const Meldestelle& sprachwechsel, const Zeilenbau::Werkstatt& werkstatt)
    : bibliothek_(bibliothek),
      einstellungen_(einstellungen),
      dateimanager_(dateimanager),
      sprachwechsel_(sprachwechsel),
      texte_(Ansichtstexte::aktuelle()),
      werkzeuge_(new Werkzeuge(einstellungen, this)),
      teiler_(new Hauptteiler(
          [this](QPainter& maler) {
              Kartenrahmen::zeichneSchatten(maler, QRect(tabelle_->mapTo(teiler_, QPoint()), tabelle_->size()));
          },
          this)),
      kopf_(new Kopf),
      filter_(new Filterleiste([this](const Filterleiste::Aenderung& aenderung) { aendere(aenderung); })),
      tabelle_(new TabellenAnsicht),
      leereTabelle_(new Leerbild(Leerbild::Form::zeichen, "map.light")),
      detail_(new DetailAnsicht),
      status_(new Statusleiste(this)),
      ablage_(new Dateiablage(this)),
      auffrischung_([this] { frischeAuf(); }),
      auswahlauffrischung_([this] { zeigeAusgewaehlten(ausgewaehlter(zustand_.auswahl, zeilenbau_.speicher())); }),
      zeilenbau_(werkstatt, [this] { auffrischung_.sofort(); }) {
    setWindowTitle(QStringLiteral("Korvo GPX Library"));
    ordneAn();
    verbinde();
    verbindeDetail();
    verbindeAktionen();
    belegeTasten();
    stelleWiederHer();
    sprichNeu();
    tabelle_->setFocus();
}

void InhaltsAnsicht::ordneAn() {
    auto* links = new QWidget;
    auto* spalte = new QVBoxLayout(links);
    spalte->setContentsMargins(14, 12, 0, 12);
    spalte->setSpacing(0);
    spalte->addWidget(kopf_);
    spalte->addSpacing(kAbstand - papier::kRingRand);  // the header keeps room for a focus ring
    spalte->addWidget(filter_);
    spalte->addSpacing(kAbstand);
    spalte->addWidget(tabelle_, 1);
    leereTabelle_->setParent(links);  // above the table, not inside: a screen reader looks for cells there
    leereTabelle_->hide();
    detail_->setMinimumWidth(kRechtsMindestens);
    detail_->setMaximumWidth(kRechtsHoechstens);
    teiler_->addWidget(links);
    teiler_->addWidget(detail_);
    links->lower();  // read first, as it is seen first: the splitter has put it above the panel
    teiler_->setzeMindestensLinks(kLinksMindestens);
    teiler_->setStretchFactor(0, 1);
    teiler_->setStretchFactor(1, 0);

    auto* stapel = new QVBoxLayout(this);
    stapel->setContentsMargins(0, 0, 0, 0);
    stapel->setSpacing(0);
    stapel->addWidget(werkzeuge_);
    stapel->addWidget(teiler_, 1);
    stapel->addWidget(status_);
    setTabOrder(tabelle_->horizontalHeader(), tabelle_);  // moving it here has put it first
}

void InhaltsAnsicht::verbinde() {
    const auto fordere = [this] { auffrischung_.fordere(); };
    abos_.push_back(bibliothek_.eintraege().beobachte([this] {
        eintraegeNeu_ = true;
        auffrischung_.fordere();
    }));
    abos_.push_back(bibliothek_.laedt().beobachte(fordere));
    abos_.push_back(bibliothek_.geoeffnet().beobachte([this] {
        geduld_.start();  // again after a change of folder
        auffrischung_.fordere();
    }));
    geduld_.setSingleShot(true);
    geduld_.setInterval(kGeduld);
    connect(&geduld_, &QTimer::timeout, this, fordere);
    abos_.push_back(bibliothek_.hinweis().beobachte([this] {
        hinweisNeu_ = true;
        auffrischung_.fordere();
    }));
    abos_.push_back(bibliothek_.lesefehler().beobachte(fordere));
    abos_.push_back(bibliothek_.ordner().beobachte(fordere));
    abos_.push_back(bibliothek_.ausstehend().beobachte(fordere));
    abos_.push_back(bibliothek_.zuKopieren().beobachte(fordere));
    abos_.push_back(sprachwechsel_.beobachte([this] { sprichNeu(); }));

    connect(&werkzeuge_->suchfeld(), &QLineEdit::textChanged, this, [this](const QString& text) {
        aendere([suche = text.toStdString()](Ansichtszustand& zustand) { zustand.suche = suche; });
    });
    connect(&werkzeuge_->suchfeld(), &Suchfeld::verlassen, this, &InhaltsAnsicht::verlasseSuche);
    connect(werkzeuge_, &Werkzeuge::neuladenGewuenscht, this, [this] { bibliothek_.lade(); });
    connect(werkzeuge_, &Werkzeuge::spracheGewaehlt, this, &InhaltsAnsicht::waehleSprache);
    connect(werkzeuge_, &Werkzeuge::tastenGewuenscht, this, &InhaltsAnsicht::oeffneTastenblatt);
    connect(werkzeuge_, &Werkzeuge::ueberGewuenscht, this, &InhaltsAnsicht::oeffneUeberblatt);
    connect(tabelle_, &TabellenAnsicht::kopfGeklickt, this, [this](Spalte spalte) {
        aendere([spalte](Ansichtszustand& zustand) { zustand.sortierung.klicke(spalte); });
    });
    connect(tabelle_, &TabellenAnsicht::auswahlGeaendert, this, [this](const TabellenAnsicht::Auswahl& auswahl) {
        zustand_.auswahl = auswahl;
        zuZeigen_.clear();  // whoever chooses for himself is looking elsewhere
        auswahlauffrischung_.fordere();
    });
    detail_->installEventFilter(this);
    tabelle_->viewport()->installEventFilter(this);
}

/// To the rows that were found: to those selected, if there are some among them, else to the first.
void InhaltsAnsicht::verlasseSuche() {
    tabelle_->setFocus(Qt::ShortcutFocusReason);
    tabelle_->markiere(0);
    tabelle_->rolleZurAuswahl();
}

void InhaltsAnsicht::leereOderVerlasseSuche() {
    Suchfeld& suchfeld = werkzeuge_->suchfeld();
    if (suchfeld.hasFocus() && suchfeld.text().isEmpty()) {
        tabelle_->setFocus(Qt::ShortcutFocusReason);
    } else {
        suchfeld.clear();
    }
}

void InhaltsAnsicht::stelleWiederHer() {
    Fensterlage::stelle(*this, kGroesse, ausBase64(einstellungen_.lies(kFensterlage)));
    teiler_->setSizes({width() - 1 - kRechtsIdeal, kRechtsIdeal});
    teiler_->restoreState(ausBase64(einstellungen_.lies(kTeilerlage)));
    teiler_->setHandleWidth(1);
    if (const auto breiten = einstellungen_.lies(kSpaltenbreiten)) {
        tabelle_->setzeSpaltenbreiten(alsText(*breiten));
    }
}

void InhaltsAnsicht::closeEvent(QCloseEvent* ereignis) {
    einstellungen_.schreibe(kFensterlage, alsBase64(saveGeometry()));
    einstellungen_.schreibe(kTeilerlage, alsBase64(teiler_->saveState()));
    einstellungen_.schreibe(kSpaltenbreiten, tabelle_->spaltenbreiten().toStdString());
    if (mussNochKopieren()) {
        ereignis->ignore();
        oeffneKopierblatt();
        return;
    }
    QWidget::closeEvent(ereignis);
}

void InhaltsAnsicht::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter(this).fillRect(rect(), KistePapier::buehne);
    if (!gezeigt_) {
        gezeigt_ = true;
        geduld_.start();
        // The first frame stands before anything is read, however large the library is.
        QTimer::singleShot(0, this, &InhaltsAnsicht::ladeErstmals);
    }
}

bool InhaltsAnsicht::eventFilter(QObject* quelle, QEvent* ereignis) {
    if (ereignis->type() == QEvent::Resize) {
        if (quelle == detail_) {
            werkzeuge_->richteSpalteAus(detail_->width());
        } else {
            legeLeereTabelle();
        }
    }
    return QWidget::eventFilter(quelle, ereignis);
}

void InhaltsAnsicht::legeLeereTabelle() {
    leereTabelle_->setGeometry(tabelle_->geometry());
}

void InhaltsAnsicht::aendere(const Filterleiste::Aenderung& aenderung) {
    aenderung(zustand_);
    auffrischung_.sofort();
}

void InhaltsAnsicht::waehleSprache(const QString& code) {
    einstellungen_.schreibe(einstellung::kAppLanguage, code.toStdString());
    sprachwechsel_.melde();
}

void InhaltsAnsicht::sprichNeu() {
    texte_ = Ansichtstexte::aktuelle();
    zustand_.filter[FilterFeld::sport].reset();  // its labels belong to the old language
    setLocale(QLocale(alsText(texte_.sprache)));
    werkzeuge_->kleide();
    kopf_->kleide();
    filter_->kleide();
    status_->kleide();
    tabelle_->kleide();
    leereTabelle_->kleide();
    detail_->kleide();
    QStringList titel;
    for (const std::string& einer : texte_.spalten) {
        titel << alsText(einer);
    }
    tabelle_->setzeTitel(titel);
    auffrischung_.sofort();
}

Ansichtszustand::Oeffnung InhaltsAnsicht::oeffnung() {
    // Known are the records only when they can be shown.
    if (bibliothek_.geoeffnet().wert() && !(zeilenbau_.baut() && zeilenbau_.speicher().merkmale().empty())) {
        geduld_.stop();
        return Ansichtszustand::Oeffnung::offen;
    }
    const bool dauert = gezeigt_ && !geduld_.isActive();
    return dauert ? Ansichtszustand::Oeffnung::dauert : Ansichtszustand::Oeffnung::still;
}

void InhaltsAnsicht::zeigeAusgewaehlten(const Eintrag& eintrag) {
    const auto& lesefehler = bibliothek_.lesefehler().wert();
    const auto fehler = eintrag ? lesefehler.find(eintrag->pfad) : lesefehler.end();
    detail_->zeige(eintrag, fehler == lesefehler.end() ? std::string() : fehler->second);
    kopf_->zeigeSport(eintrag);
}

void InhaltsAnsicht::frischeAuf() {
    const auto& eintraege = bibliothek_.eintraege().wert();
    zustand_.laedt = bibliothek_.laedt().wert();
    zeilenbau_.gleicheAb(eintraege, texte_, zustand_.sortierung);
    zustand_.oeffnung = oeffnung();
    const bool eintraegeNeu = std::exchange(eintraegeNeu_, eintraegeNeu_ && zeilenbau_.baut());
    if (const bool zuEnde = std::exchange(hatGeladen_, zustand_.laedt) && !zustand_.laedt; eintraegeNeu || zuEnde) {
        bereinigeAuswahl();
    }
    if (werkzeuge_->suchfeld().text().toStdString() != zustand_.suche) {
        const QSignalBlocker still(werkzeuge_->suchfeld());
        werkzeuge_->suchfeld().setText(alsText(zustand_.suche));
    }
    Ansichtsbild bild = berechneAnsichtsbild(zustand_, texte_, zeilenbau_.speicher());
    werkzeuge_->zeigeOrdner(bibliothek_.ordner().wert());
    kopf_->zeige(alsText(bild.routenText), alsText(bild.summeText));
    filter_->zeige(bild, zustand_, texte_);
    tabelle_->setzeSortierung(zustand_.sortierung);
    tabelle_->setzeZahlen(zeilenbau_.speicher().zahlen());
    const bool folgt = eintraegeNeu && folgtDieAuswahl();
    tabelle_->setzeZeilen(std::move(bild.zeilen));
    zeilenbau_.raeumeAuf();
    tabelle_->setzeAuswahl(zustand_.auswahl);
    if (folgt && !zustand_.auswahl.empty() && eintragMit(*zustand_.auswahl.begin()) != nullptr) {
        tabelle_->markiere();
    }
    letzteFilter_ = zustand_.filter;
    letzteSuche_ = zustand_.suche;
    zeigeAusgewaehlten(bild.ausgewaehlt);
    leereTabelle_->setVisible(bild.leer.has_value());
    if (bild.leer) {
        leereTabelle_->zeige(alsText(bild.leer->titel), alsText(bild.leer->beschreibung));
        legeLeereTabelle();
        leereTabelle_->raise();
    }
    status_->zeigeZahlen(alsText(bild.dateienText), alsText(bild.gesamtText));
    status_->zeigeLaden(zustand_.laedt, bibliothek_.ausstehend().wert());
    status_->zeigeHinweis(alsText(bibliothek_.hinweis().wert().value_or("")), std::exchange(hinweisNeu_, false));
    status_->zeigeOrdner(alsText(bibliothek_.ordner().wert()));
    if (kopierblatt_ && mussNochKopieren()) {
        kopierblatt_->zeige(bibliothek_.zuKopieren().wert());
    } else if (kopierblatt_) {
        QTimer::singleShot(0, this, &QWidget::close);
    }
    if (!zeilenbau_.baut() && std::exchange(rolltZurAuswahl_, false)) {
        tabelle_->rolleZurAuswahl();
    }
    if (koennenGezeigtWerden()) {
        QTimer::singleShot(0, this, &InhaltsAnsicht::zeigeGeoeffnete);
    }
}

/// Takes out of the selection what is no longer in the library. A file that is being read anew still is.
void InhaltsAnsicht::bereinigeAuswahl() {
    const Pfadmenge vorher = zustand_.auswahl;
    zustand_.behalteVorhandene(bibliothek_.eintraege().wert());
    if (!zustand_.laedt || zustand_.auswahl.size() == vorher.size()) {
        return;
    }
    std::unordered_set<std::string> fehlende;
    for (const std::string& pfad : vorher) {
        if (!zustand_.auswahl.contains(pfad)) {
            fehlende.insert(pfad);
        }
    }
    for (const std::string& pfad : bibliothek_.werdenGelesen(fehlende)) {
        zustand_.auswahl.insert(pfad);
    }
}

void InhaltsAnsicht::kommNachVorn() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

/// A change of the selected record, by its sport say, may have taken its row out of what the filters show. Who works
/// through the rows by keyboard goes on with the next one, which is selected then: what the keyboard means is what is
/// marked. Filters and search themselves leave the selection alone, and so does whoever works elsewhere.
bool InhaltsAnsicht::folgtDieAuswahl() const {
    return tabelle_->hasFocus() && tabelle_->istMarkiert() && letzteFilter_ == zustand_.filter &&
           letzteSuche_ == zustand_.suche && tabelle_->auswahl() == zustand_.auswahl;
}

}  // namespace spurkiste
