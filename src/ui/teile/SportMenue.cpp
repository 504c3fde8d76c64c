#include "ui/teile/SportMenue.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "base/Text.h"
#include "i18n/AppSprache.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/PapierMenue.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kMenueBreite = 188;
constexpr int kMenueAbstand = 4;
constexpr int kKapselHoechstens = 220;
constexpr int kKapselMindestens = 112;  // if it would like to be wider

// The larger form, in logical pixels.
constexpr double kHoehe = 40;
constexpr double kRand = 13;
constexpr double kAbstand = 9;
constexpr double kStift = 16;
constexpr double kWinkel = 11;
constexpr double kObereZeile = 12;
constexpr double kUntereZeile = 15;

QFont obereSchrift() {
    return Schrift::mach(9.5, QFont::Bold, 1.1);
}

QFont untereSchrift() {
    return Schrift::mach(12, QFont::DemiBold);
}

QString q(const std::u16string& text) {
    return QString::fromStdU16String(text);
}

}  // namespace

SportMenue::SportMenue(bool ausfuehrlich, QWidget* eltern)
    : Drueckbar(eltern), ausfuehrlich_(ausfuehrlich), oben_(obereSchrift()), unten_(untereSchrift()) {
    setzeAufklappend();
    setSizePolicy(ausfuehrlich ? QSizePolicy::Fixed : QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, &SportMenue::oeffneHier);
}

std::optional<GpxSportart> SportMenue::aktuelleSportart(const GpxMetadaten& eintrag) {
    const auto geschrieben = GpxSportart::aus(eintrag.sportRoh);
    return geschrieben ? geschrieben : eintrag.sportVorschlag();
}

QString SportMenue::kurzhilfe(const GpxMetadaten& eintrag) {
    return eintrag.nenntSport()
               ? QStringLiteral("Sportart aus der GPX-Datei — wählen, um <type> zu ändern")
               : QStringLiteral("Automatischer Vorschlag — wählen, um <type> dauerhaft in die GPX-Datei zu schreiben");
}

void SportMenue::zeige(const Eintrag& eintrag) {
    eintrag_ = eintrag;
    anzeige_ = text::utf16(text::einzeilig(eintrag->sportAnzeige()));
    ueberzeile_ = QString::fromStdString(AppSprache::text("changeSport"));
    kapsel_ = SportKapsel();  // the fonts belong to the language
    oben_ = Schriftsatz(obereSchrift());
    unten_ = Schriftsatz(untereSchrift());
    erklaere();
    setAccessibleName(ausfuehrlich_ ? QStringLiteral("Sportart ändern") : QStringLiteral("Sportart ") + q(anzeige_));
    updateGeometry();
    update();
}

SportKapsel::Inhalt SportMenue::inhalt() const {
    const auto art = aktuelleSportart(*eintrag_);
    return {anzeige_, art ? art->symbol() : std::string_view(), KistePapier::sportFarbe(art), eintrag_->nenntSport()};
}

QString SportMenue::mitName(const QString& sport, const QString& hilfe) {
    return sport + QStringLiteral(" · ") + hilfe;
}

bool SportMenue::istGekuerzt() const {
    constexpr double kBeliebig = 1e6;
    return ausfuehrlich_ ? unten_.breite(q(anzeige_)) > kKapselHoechstens
                         : kapsel_.breite(inhalt(), kBeliebig) > papier::ohneRing(*this).width() + 1;
}

void SportMenue::erklaere() {
    const QString hilfe = kurzhilfe(*eintrag_);
    const bool gekuerzt = istGekuerzt();
    setzeKurzhilfe(*this, gekuerzt ? mitName(q(anzeige_), hilfe) : hilfe);
    if (!gekuerzt) {
        setToolTip(hilfe);  // no markup in it, as there may be in a name
    }
}

void SportMenue::resizeEvent(QResizeEvent* ereignis) {
    Drueckbar::resizeEvent(ereignis);
    if (eintrag_) {
        erklaere();
    }
}

QSize SportMenue::sizeHint() const {
    const int ring = 2 * papier::kRingRand;
    if (!eintrag_) {
        return {ring, ring};
    }
    if (!ausfuehrlich_) {
        return {static_cast<int>(std::ceil(kapsel_.breite(inhalt(), kKapselHoechstens))) + ring,
                static_cast<int>(SportKapsel::kHoehe) + ring};
    }
    const double zeilen = std::max(oben_.breite(ueberzeile_), unten_.breite(q(anzeige_)));
    const double breite =
        2 * kRand + kStift + kAbstand + std::min(zeilen, static_cast<double>(kKapselHoechstens)) + kAbstand + kWinkel;
    return {static_cast<int>(std::ceil(breite)) + ring, static_cast<int>(kHoehe) + ring};
}

QSize SportMenue::minimumSizeHint() const {
    const QSize ideal = sizeHint();
    return ausfuehrlich_ ? ideal : ideal.boundedTo({kKapselMindestens + 2 * papier::kRingRand, ideal.height()});
}

void SportMenue::paintEvent(QPaintEvent* /*ereignis*/) {
    if (!eintrag_) {
        return;
    }
    QPainter maler(this);
    const QRectF kasten = papier::ohneRing(*this);
    if (ausfuehrlich_) {
        maleAusfuehrlich(maler, kasten);
    } else {
        kapsel_.zeichne(maler, kasten.left(), kasten.top(), inhalt(), kasten.width());
    }
    const double radius = kasten.height() / 2;
    const bool gedrueckt = isDown() || istOffen();
    if (underMouse() || gedrueckt) {
        papier::form(maler, kasten, radius, KistePapier::mitDeckkraft(KistePapier::tinte, gedrueckt ? 0.06 : 0.03),
                     Qt::transparent);
    }
    if (hasFocus()) {
        papier::fokusring(maler, kasten, radius);
    }
}

void SportMenue::maleAusfuehrlich(QPainter& maler, const QRectF& kasten) const {
    papier::form(maler, kasten, kHoehe / 2, KistePapier::mitDeckkraft(KistePapier::gold, 0.18),
                 KistePapier::mitDeckkraft(KistePapier::gold, 0.72));
    const double mitte = kasten.center().y();
    double x = kasten.left() + kRand;
    Symbole::zeichne(maler, QRectF(x, mitte - kStift / 2, kStift, kStift), "pencil", KistePapier::tinte);
    x += kStift + kAbstand;
    const double rechts = kasten.right() - kRand - kWinkel;
    const double oben = mitte - (kObereZeile + kUntereZeile) / 2;
    maler.setPen(KistePapier::tinte);
    const double platz = rechts - kAbstand - x + 1;  // the widget's width is rounded
    oben_.zeichne(maler, QRectF(x, oben, platz, kObereZeile), Qt::AlignLeft, ueberzeile_);
    unten_.zeichne(maler, QRectF(x, oben + kObereZeile, platz, kUntereZeile), Qt::AlignLeft, q(anzeige_));
    Symbole::zeichne(maler, QRectF(rechts, mitte - kWinkel / 2, kWinkel, kWinkel), "chevron.down", KistePapier::tinte);
}

void SportMenue::oeffneHier() {
    const QRect hier = papier::ohneRing(*this).toRect();
    zeigeOffen(*oeffne(*eintrag_, this, {mapToGlobal(hier.topLeft()), hier.size()},
                       [this, eintrag = eintrag_](GpxSportart art) { Q_EMIT gewaehlt(eintrag, art); }));
}

QWidget* SportMenue::oeffne(const GpxMetadaten& eintrag, QWidget* eltern, const QRect& unter, const Wahl& wahl) {
    auto* menue = new PapierMenue(kMenueBreite, eltern);
    menue->setAttribute(Qt::WA_DeleteOnClose);
    menue->setAccessibleName(QStringLiteral("Sportart ändern"));
    const auto aktuelle = aktuelleSportart(eintrag);
    const std::string_view zeichen = eintrag.nenntSport() ? "checkmark" : "wand.and.stars";
    for (const GpxSportart art : GpxSportart::allCases()) {
        const bool dieses = aktuelle && *aktuelle == art;
        QAction* zeile =
            menue->fuegeMitZeichenHinzu(QString::fromStdString(art.deutsch()), dieses ? zeichen : std::string_view(),
                                        dieses && eintrag.nenntSport());
        connect(zeile, &QAction::triggered, eltern, [wahl, art] { wahl(art); });
        if (dieses) {
            menue->setActiveAction(zeile);
        }
    }
    constexpr int einzug = 2;  // the card's edge stands a little before the capsule's, which is round
    menue->oeffneUnter(unter.translated(-einzug, 0), kMenueAbstand);
    return menue;
}

}  // namespace spurkiste
