#include <QApplication>
#include <cstdio>
#include <exception>
#include <string_view>
#include <variant>
#include <vector>

#include "app/SpurkisteApp.h"
#include "app/Startaufruf.h"

int main(int anzahl, char** argumente) {
    using spurkiste::Startaufruf;
    constexpr int falscherAufruf = 2;
    const std::vector<std::string_view> worte(argumente + (anzahl > 0 ? 1 : 0), argumente + anzahl);
    const auto gelesen = Startaufruf::lies(worte);
    if (const auto* fehler = std::get_if<Startaufruf::Fehler>(&gelesen)) {
        std::fprintf(stderr, "%s\n", fehler->text.c_str());
        return falscherAufruf;
    }
    const auto& aufruf = std::get<Startaufruf>(gelesen);
    if (aufruf.befehl != Startaufruf::Befehl::fenster) {  // answered without a display
        std::fputs(
            (aufruf.befehl == Startaufruf::Befehl::hilfe ? Startaufruf::hilfe() : Startaufruf::version()).c_str(),
            stdout);
        return 0;
    }
    QApplication::setApplicationName(QStringLiteral("spurkiste"));
    QApplication::setDesktopFileName(QStringLiteral("spurkiste"));
    QApplication programm(anzahl, argumente);
    try {
        spurkiste::SpurkisteApp app(aufruf.ordner);
        app.oeffneFenster();
        return QApplication::exec();
    } catch (const std::exception& fehler) {
        std::fprintf(stderr, "spurkiste: %s\n", fehler.what());
        return 1;
    }
}
