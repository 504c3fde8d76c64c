#include <QApplication>
#include <QIcon>
#include <QSocketNotifier>
#include <QString>
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "app/Einzelinstanz.h"
#include "app/SpurkisteApp.h"
#include "app/Startaufruf.h"
#include "base/Dateien.h"
#include "base/Text.h"
#include "library/Oeffnung.h"
#include "platform/posix/Signalleitung.h"
#include "ui/fenster/InhaltsAnsicht.h"

namespace {

using spurkiste::Startaufruf;

constexpr int kGescheitert = 1;

void schreibe(std::FILE* strom, const std::string& text) {
    (void)std::fputs(text.c_str(), strom);
}

/// What the toolkit says while it looks for a display would help nobody; without one it would abort.
void sageOhneBildschirm(QtMsgType art, const QMessageLogContext& /*woher*/, const QString& /*text*/) {
    if (art == QtFatalMsg) {
        schreibe(stderr, "spurkiste: Kein Bildschirm erreichbar. Ohne Fenster: spurkiste-cli --help\n");
        std::_Exit(kGescheitert);
    }
}

/// Says which of the files cannot be opened, and returns the exit status of a program that opens the others.
int pruefe(const std::vector<std::string>& dateien) {
    std::size_t gescheitert = 0;
    for (const std::string& datei : dateien) {
        if (const auto einwand = spurkiste::oeffnung::einwand(datei)) {
            schreibe(stderr, "spurkiste: " + spurkiste::oeffnung::meldung(datei, *einwand) + "\n");
            ++gescheitert;
        }
    }
    return !dateien.empty() && gescheitert == dateien.size() ? kGescheitert : 0;
}

/// The icon of all windows, drawn for each of these sizes.
QIcon programmsymbol() {
    QIcon symbol;
    for (const int punkte : {16, 24, 32, 48, 64, 128, 256}) {
        symbol.addFile(QStringLiteral(":/programm/%1.png").arg(punkte));
    }
    return symbol;
}

int fuehreAus(int& anzahl, char** argumente) {
    constexpr int falscherAufruf = 2;
    const std::vector<std::string_view> worte(argumente + (anzahl > 0 ? 1 : 0), argumente + anzahl);
    const auto gelesen = Startaufruf::lies(worte);
    if (const auto* fehler = std::get_if<Startaufruf::Fehler>(&gelesen)) {
        schreibe(stderr, spurkiste::text::einzeilig(fehler->text) + "\n");
        return falscherAufruf;
    }
    const auto& aufruf = std::get<Startaufruf>(gelesen);
    if (aufruf.befehl != Startaufruf::Befehl::fenster) {  // answered without a display
        schreibe(stdout, aufruf.befehl == Startaufruf::Befehl::hilfe ? Startaufruf::hilfe() : Startaufruf::version());
        return 0;
    }
    QApplication::setApplicationName(QStringLiteral("spurkiste"));
    QApplication::setApplicationVersion(QStringLiteral(SPURKISTE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("org.spurkiste.Spurkiste"));
    const QtMessageHandler vorher = qInstallMessageHandler(sageOhneBildschirm);
    const QApplication programm(anzahl, argumente);
    qInstallMessageHandler(vorher);
    QApplication::setWindowIcon(programmsymbol());
    std::vector<std::string> dateien;
    std::transform(aufruf.dateien.begin(), aufruf.dateien.end(), std::back_inserter(dateien),
                   [](const std::string& datei) { return spurkiste::dateien::absolut(datei); });
    std::optional<std::string> ordner;
    if (aufruf.ordner) {
        ordner = spurkiste::dateien::absolut(*aufruf.ordner);
    }
    const int ausgang = pruefe(dateien);
    spurkiste::SpurkisteApp app(ordner);
    switch (app.beginne({qEnvironmentVariable("XDG_ACTIVATION_TOKEN").toStdString(), dateien})) {
        case spurkiste::Einzelinstanz::Ausgang::unser:
            break;
        case spurkiste::Einzelinstanz::Ausgang::uebergeben:
            return ausgang;
        case spurkiste::Einzelinstanz::Ausgang::stumm:
            schreibe(stderr,
                     "spurkiste: Diese Bibliothek ist schon offen, in einem Fenster, das gerade nicht antwortet\n");
            return kGescheitert;
    }
    // Asked to end, the program asks no window, finishes what is in hand and begins nothing new.
    const spurkiste::Signalleitung signale;
    std::optional<QSocketNotifier> wache;
    if (signale.lesende() >= 0) {
        wache.emplace(signale.lesende(), QSocketNotifier::Read);
        QObject::connect(&*wache, &QSocketNotifier::activated, &programm, [] { QCoreApplication::exit(0); });
    }
    app.oeffneFenster().oeffneDateien(dateien);
    const int ende = app.laufe();
    return ende == 0 ? ausgang : ende;
}

}  // namespace

int main(int anzahl, char** argumente) {
    try {
        return fuehreAus(anzahl, argumente);
    } catch (const std::exception& fehler) {
        (void)std::fputs("spurkiste: ", stderr);
        (void)std::fputs(fehler.what(), stderr);
        (void)std::fputs("\n", stderr);
        return kGescheitert;
    }
}
