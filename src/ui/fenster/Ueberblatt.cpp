#include "ui/fenster/Ueberblatt.h"

#include <QCoreApplication>
#include <QVBoxLayout>

#include "ui/teile/Absatz.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schild.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

namespace {

constexpr int kBreite = 520;
constexpr int kNachTitel = 6;
constexpr int kNachAbsatz = 8;
constexpr int kNachGruppe = 18;

struct Gruppe {
    QString titel;
    QStringList absaetze;
};

/// As NOTICES.md has it, in short.
std::vector<Gruppe> gruppen() {
    return {
        {QStringLiteral("PROGRAMM"),
         {QStringLiteral("Spurkiste %1").arg(QCoreApplication::applicationVersion()),
          QStringLiteral("© 2026 The Spurkiste maintainers. Alle Rechte vorbehalten.")}},
        {QStringLiteral("ENTHALTEN"),
         {QStringLiteral("Orte: GeoNames (geonames.org), CC BY 4.0, zusammengeführt, bereinigt, teils umbenannt und "
                         "ausgedünnt. Ohne Gewähr."),
          QStringLiteral("Zeichen: Material Symbols Rounded von Google, Apache-Lizenz 2.0.")}},
        {QStringLiteral("VOM SYSTEM"),
         {QStringLiteral("Schriften: Lato und Noto Sans CJK (SIL OFL 1.1), DejaVu Sans (Bitstream Vera)."),
          QStringLiteral("Bibliotheken: Qt %1 (LGPL 3), Expat (MIT), simdjson (Apache 2.0), ICU (Unicode), GLib "
                         "(LGPL 2.1), XCB (MIT), GNU C (LGPL 2.1) und C++ (GPL 3 mit Laufzeitausnahme).")
              .arg(QLatin1String(qVersion()))}},
        {QStringLiteral("LIZENZTEXTE"),
         {QStringLiteral("Bei den Dokumenten des Programms: NOTICES.md und copyright.")}},
    };
}

}  // namespace

Ueberblatt::Ueberblatt(QWidget* eltern) : Blatt(QStringLiteral("Über Spurkiste"), eltern) {
    auto* inhalt = new QWidget;
    auto* stapel = new QVBoxLayout(inhalt);
    stapel->setContentsMargins(papier::kRingRand, kNachTitel, papier::kRingRand, 0);
    stapel->setSpacing(0);
    for (const Gruppe& gruppe : gruppen()) {
        auto* titel = new Schild;
        titel->setText(gruppe.titel);
        titel->setFont(Schrift::mach(10, QFont::Bold, 1.8));
        titel->setzeFarbe(KistePapier::goldDunkel);
        stapel->addWidget(titel);
        stapel->addSpacing(kNachTitel);
        for (const QString& text : gruppe.absaetze) {
            auto* absatz = new Absatz(KistePapier::tinte, true, inhalt);
            absatz->setFont(Schrift::mach(12.5));
            absatz->zeige(text);
            stapel->addWidget(absatz);
            stapel->addSpacing(&text == &gruppe.absaetze.back() ? kNachGruppe : kNachAbsatz);
        }
    }
    Knopf* schliessen = wichtigerKnopf(QStringLiteral("Schließen"));
    schliessen->setzeVorgabe();
    connect(schliessen, &Knopf::clicked, this, &QDialog::accept);
    legeAus({inhalt}, {schliessen}, kBreite);
    zeigeMit(schliessen);
}

}  // namespace spurkiste
