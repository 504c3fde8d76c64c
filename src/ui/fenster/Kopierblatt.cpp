#include "ui/fenster/Kopierblatt.h"

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

Kopierblatt::Kopierblatt(QWidget* eltern)
    : Blatt(QStringLiteral("Dateien werden noch kopiert"), eltern), anzahl_(new Schild) {
    anzahl_->setFont(Schrift::mach(13));
    anzahl_->setzeFarbe(KistePapier::tinte);
    anzahl_->setContentsMargins(papier::kRingRand, 0, papier::kRingRand, papier::kRingRand);
    Knopf* hier = leiserKnopf(QStringLiteral("Fenster offen lassen"));
    Knopf* halt = leiserKnopf(QStringLiteral("Nicht weiter kopieren"));
    connect(hier, &Knopf::clicked, this, &QDialog::reject);
    connect(halt, &Knopf::clicked, this, [this, halt] {
        halt->setEnabled(false);
        Q_EMIT abbruchGewuenscht();
    });
    legeAus({anzahl_}, {halt, hier});
    zeigeMit(hier);
}

void Kopierblatt::zeige(std::size_t anzahl) {
    const QString text = anzahl == 1 ? QStringLiteral("Noch 1 Datei, dann schließt sich das Fenster.")
                                     : QStringLiteral("Noch %1 Dateien, dann schließt sich das Fenster.").arg(anzahl);
    if (anzahl_->text() != text) {  // else a screen reader is told of each refresh
        anzahl_->setText(text);
    }
}

}  // namespace spurkiste
