#include "ui/fenster/Tastenblatt.h"

#include <QGridLayout>
#include <QStringList>

#include "ui/fenster/Tasten.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schild.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

namespace {

constexpr int kBreite = 720;
constexpr int kZeile = 24;
constexpr int kZwischenSpalten = 40;
constexpr int kVorGruppe = 14;

Schild* schild(const QString& text, const QFont& schrift, const QColor& farbe) {
    auto* neues = new Schild;
    neues->setText(text);
    neues->setFont(schrift);
    neues->setzeFarbe(farbe);
    return neues;
}

QString namen(const Taste& taste) {
    QStringList alle;
    for (const QKeySequence& folge : taste.folgen + taste.weitere) {
        alle << folge.toString(QKeySequence::NativeText);
    }
    return alle.join(QStringLiteral(", "));
}

/// Appends a group's title and rows to two columns of the grid.
void legeGruppe(QGridLayout& gitter, int& reihe, int spalte, const Tastengruppe& gruppe) {
    if (reihe > 0) {
        gitter.setRowMinimumHeight(reihe++, kVorGruppe);
    }
    gitter.setRowMinimumHeight(reihe, kZeile);
    gitter.addWidget(schild(gruppe.titel, Schrift::mach(10, QFont::Bold, 1.8), KistePapier::goldDunkel), reihe++,
                     spalte, 1, 2);
    for (const Taste& taste : gruppe.tasten) {
        gitter.setRowMinimumHeight(reihe, kZeile);
        gitter.addWidget(schild(taste.wozu, Schrift::mach(12.5, QFont::Medium), KistePapier::tinte), reihe, spalte,
                         Qt::AlignVCenter);
        gitter.addWidget(schild(namen(taste), Schrift::mach(12.5), KistePapier::tinteLeise), reihe++, spalte + 1,
                         Qt::AlignRight | Qt::AlignVCenter);
    }
}

}  // namespace

Tastenblatt::Tastenblatt(QWidget* eltern) : Blatt(QStringLiteral("Tastenkürzel"), eltern) {
    auto* liste = new QWidget;
    auto* gitter = new QGridLayout(liste);
    gitter->setContentsMargins(papier::kRingRand, 0, papier::kRingRand, 0);
    gitter->setHorizontalSpacing(0);
    gitter->setVerticalSpacing(0);
    gitter->setColumnMinimumWidth(2, kZwischenSpalten);
    gitter->setColumnStretch(0, 1);
    gitter->setColumnStretch(3, 1);
    int links = 0;
    int rechts = 0;
    for (const Tastengruppe& gruppe : tasten()) {
        const bool istLetzte = &gruppe == &tasten().back();  // the longest: as long as the others together
        legeGruppe(*gitter, istLetzte ? rechts : links, istLetzte ? 3 : 0, gruppe);
    }
    Knopf* ueber = leiserKnopf(QStringLiteral("Über Spurkiste"));
    Knopf* schliessen = wichtigerKnopf(QStringLiteral("Schließen"));
    schliessen->setzeVorgabe();
    connect(schliessen, &Knopf::clicked, this, &QDialog::accept);
    connect(ueber, &Knopf::clicked, this, [this] {
        accept();
        Q_EMIT ueberGewuenscht();
    });
    legeAus({liste}, {ueber, schliessen}, kBreite);
    zeigeMit(schliessen);
}

}  // namespace spurkiste
