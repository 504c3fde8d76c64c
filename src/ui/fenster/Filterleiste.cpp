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

namespace spurkiste {

namespace {

constexpr int kHoehe = 46;
constexpr int kRadius = 14;
constexpr int kRand = 8;
constexpr int kAbstand = 8;
constexpr int kRing = papier::kRingRand;
constexpr int kLinie = 1;  // of the card's frame

struct Gestalt {
    const char* symbol;
    QString name;  // of the filter, for a screen reader
};

const std::array<Gestalt, 6>& gestalten() {
    static const std::array<Gestalt, 6> alle{{
        {"location.circle", QStringLiteral("Start")},
        {"flag.checkered", QStringLiteral("Ziel")},
        {"figure.run", QStringLiteral("Sport")},
        {"clock.arrow.circlepath", QStringLiteral("Ghost")},
        {"point.topleft.down.curvedto.point.bottomright.up", QStringLiteral("Art")},
        {"ruler", QStringLiteral("Länge")},
    }};
    return alle;
}

QString q(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

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
    zeile->setContentsMargins(kRand - kRing - kLinie, 0, kRand - kRing - kLinie, 0);
    zeile->setSpacing(kAbstand - 2 * kRing);
    for (std::size_t i = 0; i < kFilter; ++i) {
        kapseln_[i] = new PapierKapsel(gestalten()[i].symbol, reihe);
        zeile->addWidget(kapseln_[i]);
        kapseln_[i]->installEventFilter(this);
        connect(kapseln_[i], &Knopf::clicked, this, [this, i] { oeffne(static_cast<FilterFeld>(i)); });
    }
    zurueck_->setText(QStringLiteral("Zurücksetzen"));
    zurueck_->setzeSymbole("xmark");
    zurueck_->hide();
    zurueck_->installEventFilter(this);
    connect(zurueck_, &Knopf::clicked, this,
            [this] { aendere_([](Ansichtszustand& zustand) { zustand.setzeZurueck(); }); });
    zeile->addWidget(zurueck_);
    zeile->addStretch();

    rolle_->setWidget(reihe);
    rolle_->setWidgetResizable(true);
    rolle_->setFrameShape(QFrame::NoFrame);
    rolle_->setFocusPolicy(Qt::NoFocus);
    rolle_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rolle_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rolle_->viewport()->setAutoFillBackground(false);
    reihe->setAutoFillBackground(false);
    rolle_->viewport()->installEventFilter(this);
    auto* aussen = new QHBoxLayout(this);
    aussen->setContentsMargins(kLinie, kLinie, kLinie, kLinie);
    aussen->addWidget(rolle_);
    kleide();
}

void Filterleiste::kleide() {
    for (PapierKapsel* kapsel : kapseln_) {
        kapsel->kleide();
    }
    zurueck_->setzeAussehen(zuruecksetzen());
}

void Filterleiste::zeigeAngebot(FilterFeld feld, Angebot angebot) {
    const auto stelle = static_cast<std::size_t>(feld);
    PapierKapsel& kapsel = *kapseln_[stelle];
    kapsel.setText(angebot.wahlen.value(angebot.gewaehlt));
    const QString vorsatz = gestalten()[stelle].name + QStringLiteral(": ");
    const QString name = kapsel.text().startsWith(vorsatz) ? kapsel.text() : vorsatz + kapsel.text();
    if (kapsel.accessibleName() != name) {  // else a screen reader is told of each refresh
        kapsel.setAccessibleName(name);
    }
    kapsel.setzeAktiv(angebot.gewaehlt > 0);
    kapsel.updateGeometry();
    angebote_[stelle] = std::move(angebot);
}

void Filterleiste::zeige(const Ansichtsbild& bild, const Ansichtszustand& zustand, const Ansichtstexte& texte) {
    using Textfilter = std::optional<std::string> Ansichtszustand::*;
    const auto ausTexten = [&](std::string_view alle, const std::vector<std::string>& wahlen, Textfilter filter) {
        Angebot angebot;
        angebot.wahlen << q(alle);
        for (const std::string& wahl : wahlen) {
            if (zustand.*filter && *(zustand.*filter) == wahl) {
                angebot.gewaehlt = static_cast<int>(angebot.wahlen.size());
            }
            angebot.wahlen << q(wahl);
        }
        angebot.aenderung = [wahlen, filter](int zeile) -> Aenderung {
            const auto neu = zeile == 0 ? std::nullopt : std::optional(wahlen[static_cast<std::size_t>(zeile - 1)]);
            return [neu, filter](Ansichtszustand& ziel) { ziel.*filter = neu; };
        };
        return angebot;
    };
    const auto ausFaellen = [&](const auto& faelle, auto filter) {
        Angebot angebot;
        for (const auto fall : faelle) {
            if (fall == zustand.*filter) {
                angebot.gewaehlt = static_cast<int>(angebot.wahlen.size());
            }
            angebot.wahlen << q(rawValue(fall));
        }
        angebot.aenderung = [faelle, filter](int zeile) -> Aenderung {
            const auto neu = faelle[static_cast<std::size_t>(zeile)];
            return [neu, filter](Ansichtszustand& ziel) { ziel.*filter = neu; };
        };
        return angebot;
    };
    zeigeAngebot(FilterFeld::start, ausTexten(kStartAlle, bild.startOrte, &Ansichtszustand::startFilter));
    zeigeAngebot(FilterFeld::ziel, ausTexten(kZielAlle, bild.zielOrte, &Ansichtszustand::zielFilter));
    zeigeAngebot(FilterFeld::sport, ausTexten(texte.alleSportarten, bild.sportarten, &Ansichtszustand::sportFilter));
    zeigeAngebot(FilterFeld::ghost, ausFaellen(bild.ghostFaelle, &Ansichtszustand::ghostFilter));
    zeigeAngebot(FilterFeld::art, ausFaellen(bild.artFaelle, &Ansichtszustand::artFilter));
    zeigeAngebot(FilterFeld::laenge, ausFaellen(bild.laengenFaelle, &Ansichtszustand::laengenFilter));
    zurueck_->setVisible(bild.filterAktiv);
}

void Filterleiste::oeffne(FilterFeld feld) {
    const auto stelle = static_cast<std::size_t>(feld);
    const Angebot angebot = angebote_[stelle];
    auto* popup = new AuswahlPopup(
        angebot.wahlen, angebot.gewaehlt, [this, angebot](int zeile) { aendere_(angebot.aenderung(zeile)); }, this);
    popup->oeffneUnter(*kapseln_[stelle], gestalten()[stelle].name);
}

bool Filterleiste::eventFilter(QObject* quelle, QEvent* ereignis) {
    if (ereignis->type() == QEvent::FocusIn) {
        rolle_->ensureWidgetVisible(static_cast<QWidget*>(quelle), kRand, 0);
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
