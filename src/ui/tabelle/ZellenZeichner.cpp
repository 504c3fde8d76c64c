#include "ui/tabelle/ZellenZeichner.h"

#include <QPen>
#include <algorithm>
#include <cmath>
#include <string>

#include "ui/tabelle/TabellenModell.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

namespace {

// Logical pixels.
constexpr double kSchrift = 12.5;
constexpr int kSymbol = 15;
constexpr int kSymbolAbstand = 7;
constexpr int kLinienrand = 14;

SportKapsel::Inhalt kapselInhalt(const Zeile& zeile) {
    // A sport that the file names but nobody knows has neither icon nor colour of its own.
    const auto& sport = zeile.sport();
    return {zeile.text(Spalte::sport), sport ? sport->symbol() : std::string_view(), KistePapier::sportFarbe(sport),
            zeile.sportAusDatei()};
}

const QPen& stift(Schriftfarbe farbe) {
    static const QPen kTinte(KistePapier::tinte);
    static const QPen kLeise(KistePapier::tinteLeise);
    static const QPen kGruen(KistePapier::gruen);
    switch (farbe) {
        case Schriftfarbe::tinteLeise:
            return kLeise;
        case Schriftfarbe::gruen:
            return kGruen;
        default:
            return kTinte;
    }
}

}  // namespace

ZellenZeichner::ZellenZeichner()
    : satz_(Schrift::mach(kSchrift), kSchrift), namenssatz_(Schrift::mach(kSchrift, QFont::Medium), kSchrift) {}

void ZellenZeichner::zeichne(QPainter& maler, const QRect& reihe, const Zeile& zeile, const std::vector<Lage>& spalten,
                             Zustand zustand) {
    static const QColor kUeberfahren = KistePapier::mitDeckkraft(KistePapier::tinte, 0.028);
    static const QColor kHaarlinie = KistePapier::mitDeckkraft(KistePapier::linie, 0.34);
    if (zustand.ueberfahren) {
        maler.fillRect(reihe, kUeberfahren);
    }
    for (const Lage& lage : spalten) {
        zeichneZelle(maler, QRect(lage.links, reihe.top(), lage.breite, reihe.height()), zeile, lage.spalte);
    }
    maler.fillRect(QRect(reihe.left() + kLinienrand, reihe.bottom(), reihe.width() - 2 * kLinienrand, 1), kHaarlinie);
    if (zustand.gewaehlt) {
        maler.fillRect(reihe, KistePapier::auswahlband);
    }
}

void ZellenZeichner::zeichneZelle(QPainter& maler, const QRect& zelle, const Zeile& zeile, Spalte spalte) {
    if (spalte == Spalte::sport) {
        const QRectF platz = kapsel(zelle, zeile);
        kapsel_.zeichne(maler, platz.left(), platz.top(), kapselInhalt(zeile), platz.width());
        return;
    }
    QRect kasten = zelle.adjusted(angaben(spalte).rand->links, 0, -angaben(spalte).rand->rechts, 0);
    if (spalte == Spalte::name) {
        bilder_.zeichneSymbol(maler, QRectF(kasten.left(), kasten.top(), kSymbol, kasten.height()), zeile.symbol(),
                              KistePapier::sportFarbe(zeile.sport()));
        kasten.setLeft(kasten.left() + kSymbol + kSymbolAbstand);
    }
    maler.setPen(stift(zeile.farbe(spalte)));
    (spalte == Spalte::name ? namenssatz_ : satz_).zeichne(maler, kasten, ausrichtung(spalte), zeile.text(spalte));
}

QRectF ZellenZeichner::kapsel(const QRect& zelle, const Zeile& zeile) {
    const int links = angaben(Spalte::sport).rand->links;
    const double breite =
        kapsel_.breite(kapselInhalt(zeile), zelle.width() - links - angaben(Spalte::sport).rand->rechts);
    return {double(zelle.left() + links), zelle.top() + (zelle.height() - SportKapsel::kHoehe) / 2, breite,
            SportKapsel::kHoehe};
}

QPixmap ZellenZeichner::zugbild(const Zeile& zeile, int anzahl, double pixelverhaeltnis) {
    constexpr double kHoechstens = 260;
    constexpr double kRand = 12;
    constexpr double kHoehe = 30;
    const std::u16string mehr = anzahl > 1 ? u"  +" + QString::number(anzahl - 1).toStdU16String() : u"";
    const double zusatz = satz_.breite(mehr);
    const double name = std::min(kHoechstens, namenssatz_.breite(zeile.text(Spalte::name)));
    const QSizeF groesse(std::ceil(2 * kRand + kSymbol + kSymbolAbstand + name + zusatz), kHoehe);
    QPixmap bild((groesse * pixelverhaeltnis).toSize());
    bild.setDevicePixelRatio(pixelverhaeltnis);
    bild.fill(Qt::transparent);
    QPainter maler(&bild);
    papier::form(maler, QRectF(QPointF(), groesse), kHoehe / 2, KistePapier::karte, KistePapier::linie);
    bilder_.zeichneSymbol(maler, QRectF(kRand, 0, kSymbol, kHoehe), zeile.symbol(),
                          KistePapier::sportFarbe(zeile.sport()));
    maler.setPen(stift(Schriftfarbe::tinte));
    QRectF kasten(kRand + kSymbol + kSymbolAbstand, 0, name, kHoehe);
    namenssatz_.zeichne(maler, kasten, Qt::AlignLeft, zeile.text(Spalte::name));
    maler.setPen(stift(Schriftfarbe::tinteLeise));
    satz_.zeichne(maler, QRectF(kasten.right(), 0, zusatz, kHoehe), Qt::AlignLeft, mehr);
    return bild;
}

double ZellenZeichner::idealbreite(const Zeile& zeile, Spalte spalte) {
    const int raender = angaben(spalte).rand->links + angaben(spalte).rand->rechts;
    if (spalte == Spalte::sport) {
        constexpr double kBeliebig = 1e6;
        return raender + kapsel_.breite(kapselInhalt(zeile), kBeliebig);
    }
    if (spalte == Spalte::name) {
        return raender + kSymbol + kSymbolAbstand + namenssatz_.breite(zeile.text(spalte));
    }
    return zahlenbreite(zeile.text(spalte), spalte);
}

double ZellenZeichner::zahlenbreite(std::u16string_view zahl, Spalte spalte) {
    return angaben(spalte).rand->links + satz_.breite(zahl) + angaben(spalte).rand->rechts;
}

}  // namespace spurkiste
