#include "ui/detail/DetailAnsicht.h"

#include <QGridLayout>
#include <QLocale>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include "base/Text.h"
#include "i18n/AppSprache.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kRand = 18;
constexpr int kAbstand = 16;
constexpr int kKachelluecke = 9;
constexpr int kKopfabstand = 4;
constexpr int kDatumshoehe = 15;
constexpr std::size_t kKacheln = 5;
constexpr int kRing = papier::kRingRand;

/// A number of bytes in words, in decimal units: whole up to kilobytes, then with a digit behind the point. What would
/// be rounded to a thousand of a unit is one of the next.
QString groesse(qint64 bytes, const std::string& sprache) {
    constexpr qint64 tausend = 1'000;
    constexpr qint64 million = 1'000'000;
    if (bytes < tausend) {
        return alsText(text::bytes(bytes, sprache));
    }
    qint64 gerundet = bytes;
    for (qint64 einheit = million; einheit <= million * million; einheit *= tausend) {
        const qint64 halbe = einheit / (einheit == million ? 2 * tausend : 20 * tausend);  // of the last digit shown
        gerundet = gerundet >= einheit - halbe && gerundet < einheit ? einheit : gerundet;
    }
    return QLocale(alsText(sprache)).formattedDataSize(gerundet, gerundet < million ? 0 : 1, QLocale::DataSizeSIFormat);
}

Knopf::Aussehen knopfform() {
    Knopf::Aussehen aussehen;
    aussehen.hoehe = 38;
    aussehen.radius = 19;
    aussehen.symbolKasten = 15;
    aussehen.schriftgroesse = 11.5;
    aussehen.staerke = QFont::Bold;
    aussehen.sperrung = 1.2;
    aussehen.textFarbe = KistePapier::tinte;
    aussehen.symbolFarbe = KistePapier::tinte;
    aussehen.grund = KistePapier::mitDeckkraft(KistePapier::gold, 0.16);
    aussehen.rahmen = KistePapier::mitDeckkraft(KistePapier::gold, 0.68);
    aussehen.ueberfahren = KistePapier::mitDeckkraft(KistePapier::gold, 0.08);
    aussehen.gedrueckt = KistePapier::mitDeckkraft(KistePapier::gold, 0.14);
    return aussehen;
}

}  // namespace

/// What scrolls. It paints the shadow that the sketch's card casts, on the ground of whatever the panel lies on.
class DetailAnsicht::Inhalt final : public QWidget {
  public:
    const QWidget* skizze = nullptr;

  protected:
    void paintEvent(QPaintEvent* /*ereignis*/) override {
        QPainter maler(this);
        SkizzenAnsicht::zeichneSchatten(maler, skizze->geometry());
    }
};

DetailAnsicht::DetailAnsicht(QWidget* eltern)
    : QWidget(eltern),
      stapel_(new QStackedWidget(this)),
      leer_(new Leerbild(Leerbild::Form::kreis, "point.topleft.down.curvedto.point.bottomright.up.medium")),
      rolle_(new QScrollArea),
      balken_(new Rollbalken(*rolle_->verticalScrollBar(), rolle_)),
      inhalt_(new Inhalt),
      ueberzeile_(new Schild(inhalt_)),
      titel_(new Titelzeile(KistePapier::tinte, inhalt_)),
      datum_(neueTextzeile(KistePapier::tinteLeise, inhalt_)),
      skizze_(new SkizzenAnsicht(inhalt_)),
      sport_(new SportMenue(false)) {
    inhalt_->skizze = skizze_;
    ueberzeile_->setzeFarbe(KistePapier::goldDunkel);
    ueberzeile_->setzeKuerzung(Qt::ElideRight);
    for (std::size_t i = 0; i < kKacheln; ++i) {
        kacheln_.push_back(new Kachel(inhalt_));
    }
    einordnung_ = new DetailKarte(2, sport_, inhalt_);
    route_ = new DetailKarte(2, nullptr, inhalt_);
    datei_ = new DetailKarte(2, nullptr, inhalt_);
    zeigen_ = new Knopf(inhalt_);  // last, as it is read and reached
    zeigen_->setzeSymbole("folder.bold");
    zeigen_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    ordneAn();
    setTabOrder(sport_, zeigen_);
    connect(sport_, &SportMenue::gewaehlt, this, &DetailAnsicht::sportGewaehlt);
    connect(zeigen_, &Knopf::clicked, this, [this] { Q_EMIT zeigenGewuenscht(eintrag_); });
    kleide();
}

void DetailAnsicht::ordneAn() {
    auto* kopf = new QVBoxLayout;
    kopf->setSpacing(kKopfabstand);
    kopf->addWidget(ueberzeile_);
    kopf->addSpacing(1);
    kopf->addWidget(titel_);
    kopf->addWidget(datum_);
    auto* gitter = new QGridLayout;
    gitter->setSpacing(kKachelluecke);
    for (std::size_t i = 0; i < kacheln_.size(); ++i) {
        gitter->addWidget(kacheln_[i], static_cast<int>(i / 2), static_cast<int>(i % 2));
    }
    gitter->setColumnStretch(0, 1);
    gitter->setColumnStretch(1, 1);
    auto* spalte = new QVBoxLayout;
    spalte->setContentsMargins(kRing, 0, kRing, 0);  // the button keeps that much free around itself
    spalte->setSpacing(kAbstand);
    spalte->addLayout(kopf);
    spalte->addWidget(skizze_);
    spalte->addLayout(gitter);
    spalte->addWidget(einordnung_);
    spalte->addWidget(route_);
    spalte->addWidget(datei_);
    auto* ganzeSpalte = new QVBoxLayout(inhalt_);
    ganzeSpalte->setContentsMargins(kRand - kRing, kRand - 1, kRand - kRing, kRand - kRing);
    ganzeSpalte->setSpacing(kAbstand - kRing);
    ganzeSpalte->addLayout(spalte);
    ganzeSpalte->addWidget(zeigen_);
    ganzeSpalte->addStretch();
    rolle_->setFrameShape(QFrame::NoFrame);
    rolle_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rolle_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rolle_->setFocusPolicy(Qt::NoFocus);  // Page Up and Down scroll it from the controls in it
    rolle_->viewport()->setAutoFillBackground(false);
    rolle_->setWidgetResizable(true);
    rolle_->setWidget(inhalt_);
    inhalt_->setAutoFillBackground(false);
    stapel_->addWidget(leer_);
    stapel_->addWidget(rolle_);
    auto* ganz = new QVBoxLayout(this);
    ganz->setContentsMargins(0, 0, 0, 0);
    ganz->addWidget(stapel_);
}

void DetailAnsicht::kleide() {
    ueberzeile_->setFont(Schrift::mach(10.5, QFont::Bold, 2.2));
    titel_->setFont(Schrift::mach(21, QFont::Bold));
    datum_->setFont(Schrift::mach(12, QFont::Medium));
    datum_->setFixedHeight(kDatumshoehe);
    datum_->setContentsMargins(0, 1, 0, 0);
    for (Kachel* kachel : kacheln_) {
        kachel->kleide();
    }
    einordnung_->kleide();
    route_->kleide();
    datei_->kleide();
    zeigen_->setzeAussehen(knopfform());
    leer_->kleide();
    leer_->zeige(alsText(AppSprache::text("selectRoute")),
                 QStringLiteral("Hier erscheinen Skizze, Sportart\nund alle GPX-Details."));
    if (eintrag_) {
        fuelle();
    }
}

void DetailAnsicht::zeige(const Eintrag& eintrag, const std::string& lesefehler) {
    if (eintrag == eintrag_ && lesefehler == lesefehler_) {
        return;
    }
    const bool andere = !eintrag || !eintrag_ || eintrag->pfad != eintrag_->pfad;
    eintrag_ = eintrag;
    lesefehler_ = lesefehler;
    if (eintrag_) {
        fuelle();
    }
    stapel_->setCurrentWidget(eintrag_ ? static_cast<QWidget*>(rolle_) : leer_);
    if (andere) {
        rolle_->verticalScrollBar()->setValue(0);
    }
}

void DetailAnsicht::fuelle() {
    const std::string sprache = AppSprache::code();
    std::string dateitext = groesse(eintrag_->dateiGroesse, sprache).toStdString();
    if (!lesefehler_.empty()) {
        dateitext += " · nicht lesbar: " + lesefehler_;
    }
    const auto texte = DetailTexte::aus(*eintrag_, sprache, std::move(dateitext));
    ueberzeile_->setText(alsText(texte.ueberzeile));
    titel_->zeige(alsText(texte.titel));
    datum_->setText(alsText(texte.datum));
    skizze_->zeige(eintrag_);
    for (std::size_t i = 0; i < kacheln_.size(); ++i) {
        kacheln_[i]->setVisible(i < texte.kacheln.size());
        if (i < texte.kacheln.size()) {
            kacheln_[i]->zeige(texte.kacheln[i]);
        }
    }
    einordnung_->zeige(alsText(texte.einordnung), texte.einordnungszeilen, alsText(texte.sport));
    sport_->zeige(eintrag_);
    route_->zeige(QStringLiteral("ROUTE"), texte.routenzeilen);
    datei_->zeige(QStringLiteral("DATEI"), texte.dateizeilen);
    zeigen_->setText(alsText(texte.zeigen));
}

void DetailAnsicht::resizeEvent(QResizeEvent* ereignis) {
    QWidget::resizeEvent(ereignis);
    constexpr int abstand = 2;
    balken_->setzeBahn(
        QRect(width() - abstand - Rollbalken::kDicke, abstand, Rollbalken::kDicke, height() - 2 * abstand));
    balken_->raise();
}

}  // namespace spurkiste
