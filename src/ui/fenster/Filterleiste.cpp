#include "ui/fenster/Filterleiste.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "ui/teile/AuswahlPopup.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Randblende.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kHoehe = 46;
constexpr int kRadius = 14;
constexpr int kRand = 8;
constexpr int kAbstand = 8;
constexpr int kRing = papier::kRingRand;
constexpr int kLinie = 1;  // of the card's frame

Knopf::Aussehen zuruecksetzen() {
    Knopf::Aussehen a;
    a.rand = 8;
    a.abstand = 5;
    a.symbolKasten = 14;
    a.schriftgroesse = 11.5;
    a.staerke = QFont::Bold;
    a.textFarbe = KistePapier::goldDunkel;
    a.symbolFarbe = KistePapier::goldDunkel;
    a.ueberfahren = KistePapier::mitDeckkraft(KistePapier::gold, 0.10);
    a.gedrueckt = KistePapier::mitDeckkraft(KistePapier::gold, 0.17);
    return a;
}

}  // namespace

Filterleiste::Filterleiste(std::function<void(const Aenderung&)> aendere, QWidget* eltern)
    : QWidget(eltern), aendere_(std::move(aendere)), rolle_(new QScrollArea(this)), zurueck_(new Knopf) {
    setFixedHeight(kHoehe);
    setAccessibleName(QStringLiteral("Filter"));
    auto* reihe = new QWidget;
    auto* zeile = new QHBoxLayout(reihe);
    zeile->setContentsMargins(kRand - kRing - kLinie, 0, kAbstand - 2 * kRing, 0);
    zeile->setSpacing(kAbstand - 2 * kRing);
    for (const Filterangaben& filter : kFilter) {
        auto* kapsel = new PapierKapsel(std::string(*filter.symbol), reihe);
        kapseln_[filter.feld] = kapsel;
        zeile->addWidget(kapsel);
        kapsel->installEventFilter(this);
        connect(kapsel, &Knopf::clicked, this, [this, &filter] { oeffne(filter); });
    }
    zurueck_->setText(QStringLiteral("Zurücksetzen"));
    zurueck_->setzeSymbole("xmark");
    zurueck_->hide();
    connect(zurueck_, &Knopf::clicked, this,
            [this] { aendere_([](Ansichtszustand& zustand) { zustand.setzeZurueck(); }); });

    rolle_->setWidget(reihe);
    rolle_->setWidgetResizable(true);
    rolle_->setFrameShape(QFrame::NoFrame);
    rolle_->setFocusPolicy(Qt::NoFocus);
    rolle_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rolle_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rolle_->viewport()->setAutoFillBackground(false);
    reihe->setAutoFillBackground(false);
    rolle_->viewport()->installEventFilter(this);
    new Randblende(*rolle_, KistePapier::karte, kHoehe - 2 * kRand);
    auto* aussen = new QHBoxLayout(this);
    aussen->setContentsMargins(kLinie, kLinie, kLinie, kLinie);
    aussen->setSpacing(0);
    aussen->addWidget(rolle_, 1);
    aussen->addWidget(zurueck_);
    aussen->addStretch();
    kleide();
}

QStringList Filterleiste::Angebot::texte() const {
    QStringList ergebnis{alsText(alle)};
    for (const std::string& option : optionen) {
        ergebnis << alsText(option);
    }
    return ergebnis;
}

void Filterleiste::kleide() {
    for (PapierKapsel* kapsel : kapseln_) {
        kapsel->kleide();
    }
    zurueck_->setzeAussehen(zuruecksetzen());
}

void Filterleiste::zeige(const Ansichtsbild& bild, const Ansichtszustand& zustand, const Ansichtstexte& texte) {
    for (const Filterangaben& filter : kFilter) {
        const auto& optionen = bild.optionen[filter.feld];
        const auto& wahl = zustand.filter[filter.feld];
        const auto gewaehlt = wahl ? std::find(optionen.begin(), optionen.end(), *wahl) : optionen.end();
        Angebot& angebot = angebote_[filter.feld];
        angebot.optionen = optionen;
        angebot.gewaehlt = gewaehlt == optionen.end() ? 0 : static_cast<int>(gewaehlt - optionen.begin()) + 1;
        angebot.alle = texte.alle[filter.feld];
        beschrifte(filter);
    }
    rolle_->setMaximumWidth(rolle_->widget()->sizeHint().width());  // the button stands right behind the last capsule
    if (!bild.filterAktiv && zurueck_->hasFocus()) {
        kapseln_[kFilter.back().feld]->setFocus();  // the keyboard stays close by when the button goes
    }
    zurueck_->setVisible(bild.filterAktiv);
}

void Filterleiste::beschrifte(const Filterangaben& filter) {
    const Angebot& angebot = angebote_[filter.feld];
    PapierKapsel& kapsel = *kapseln_[filter.feld];
    kapsel.setText(angebot.texte().value(angebot.gewaehlt));
    const QString vorsatz = alsText(filter.name) + QStringLiteral(": ");
    const QString name = kapsel.text().startsWith(vorsatz) ? kapsel.text() : vorsatz + kapsel.text();
    if (kapsel.accessibleName() != name) {  // else a screen reader is told of each refresh
        kapsel.setAccessibleName(name);
    }
    kapsel.setzeAktiv(angebot.gewaehlt > 0);
    kapsel.updateGeometry();
}

void Filterleiste::oeffne(const Filterangaben& filter) {
    const Angebot& angebot = angebote_[filter.feld];
    const auto waehle = [this, feld = *filter.feld, optionen = angebot.optionen](int zeile) {
        const auto neu = zeile == 0 ? std::nullopt : std::optional(optionen[static_cast<std::size_t>(zeile - 1)]);
        aendere_([&](Ansichtszustand& zustand) { zustand.filter[feld] = neu; });
    };
    auto* popup = new AuswahlPopup(angebot.texte(), angebot.gewaehlt, waehle, this);
    popup->oeffneUnter(*kapseln_[filter.feld], alsText(filter.name));
    kapseln_[filter.feld]->zeigeOffen(*popup);
}

bool Filterleiste::eventFilter(QObject* quelle, QEvent* ereignis) {
    if (ereignis->type() == QEvent::FocusIn) {
        rolle_->ensureWidgetVisible(static_cast<QWidget*>(quelle), Randblende::kBreite, 0);
    } else if (ereignis->type() == QEvent::Wheel && quelle == rolle_->viewport()) {
        const QPoint schritt = static_cast<QWheelEvent*>(ereignis)->angleDelta();
        QScrollBar* balken = rolle_->horizontalScrollBar();
        balken->setValue(balken->value() - (schritt.x() != 0 ? schritt.x() : schritt.y()) / 2);
        return true;
    }
    return QWidget::eventFilter(quelle, ereignis);
}

void Filterleiste::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    papier::form(maler, rect(), kRadius, KistePapier::karte, KistePapier::mitDeckkraft(KistePapier::linie, 0.72));
}

}  // namespace spurkiste
