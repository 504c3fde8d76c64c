#include <QFontMetricsF>
#include <QImage>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "ui/teile/Schrift.h"
#include "ui/teile/Schriftsatz.h"

namespace spurkiste {
namespace {

/// The font as the toolkit would take it, large enough that no size is rounded.
QFont gross(double groesse, QFont::Weight staerke) {
    QFont schrift = Schrift::mach(groesse, staerke);
    schrift.setPixelSize(static_cast<int>(groesse * 2));
    schrift.setHintingPreference(QFont::PreferVerticalHinting);
    return schrift;
}

double breiteDesWerkzeugs(const QFont& schrift, const std::u16string& text) {
    QTextLayout umbruch(QString::fromStdU16String(text), schrift);
    umbruch.beginLayout();
    const QTextLine zeile = umbruch.createLine();
    umbruch.endLayout();
    return zeile.horizontalAdvance();
}

TEST(SchriftsatzTest, setsTextsAsWideAsTheToolkit) {
    Schriftsatz satz(Schrift::mach(12.5), 12.5);
    const QFont schrift = gross(12.5, QFont::Normal);
    for (const char16_t* text :
         {u"Offiziell: Pfäffikon – Titisee", u"187,3 km", u"47.41236, -11.49321", u"25:01:01", u"Мюнхен", u"⟲ Rundkurs",
          u"✓", u"東京 → 大阪", u"u\u0308ber", u"🚴 Tour", u"אבג 12", u"soft\u00adhyphen", u""}) {
        EXPECT_NEAR(satz.breite(text), breiteDesWerkzeugs(schrift, text) / 2, 0.05)
            << QString::fromUtf16(text).toStdString();
    }
}

QImage leer() {
    QImage bild(400, 30, QImage::Format_ARGB32_Premultiplied);
    bild.fill(Qt::white);
    return bild;
}

QImage gezeichnet(Schriftsatz& satz, const std::u16string& text, Qt::Alignment ausrichtung, double breite) {
    QImage bild = leer();
    QPainter maler(&bild);
    satz.zeichne(maler, QRectF(10, 0, breite, 30), ausrichtung, text);
    return bild;
}

/// The columns of a picture that hold ink, as first and last.
std::pair<int, int> tinte(const QImage& bild) {
    std::pair<int, int> ergebnis{bild.width(), -1};
    for (int x = 0; x < bild.width(); ++x) {
        for (int y = 0; y < bild.height(); ++y) {
            if (qGray(bild.pixel(x, y)) < 200) {
                ergebnis = {std::min(ergebnis.first, x), x};
            }
        }
    }
    return ergebnis;
}

TEST(SchriftsatzTest, paintsWhatTheToolkitPaints) {
    // At a whole size both can be compared; the toolkit is given the baseline that the box asks for.
    QFont schrift = Schrift::mach(20);
    schrift.setPixelSize(20);
    schrift.setHintingPreference(QFont::PreferVerticalHinting);
    Schriftsatz satz(schrift, 20);
    const QFontMetricsF mass(schrift);
    for (const char16_t* text : {u"Greifensee – Pfannenstiel", u"1:04:52", u"⟲ Rundkurs", u"Mittenwald u\u0308"}) {
        QImage soll = leer();
        QPainter maler(&soll);
        maler.setFont(schrift);
        maler.drawText(QPointF(10, std::round(15 + (mass.ascent() - mass.descent()) / 2)), QString::fromUtf16(text));
        maler.end();
        const QImage ist = gezeichnet(satz, text, Qt::AlignLeft, 380);
        double anders = 0.0;
        double farbe = 0.0;
        for (int y = 0; y < ist.height(); ++y) {
            for (int x = 0; x < ist.width(); ++x) {
                anders += std::abs(qGray(ist.pixel(x, y)) - qGray(soll.pixel(x, y)));
                farbe += 255 - qGray(soll.pixel(x, y));
            }
        }
        // Places may be rounded by a quarter of a pixel; a letter out of its place makes far more of a difference.
        EXPECT_LT(anders / farbe, 0.1) << QString::fromUtf16(text).toStdString();
    }
}

TEST(SchriftsatzTest, alignsAndShortens) {
    Schriftsatz satz(Schrift::mach(12.5), 12.5);
    const std::u16string kurz = u"482 m";
    EXPECT_NEAR(tinte(gezeichnet(satz, kurz, Qt::AlignRight, 200)).second, 209, 2);
    EXPECT_NEAR(tinte(gezeichnet(satz, kurz, Qt::AlignLeft, 200)).first, 10, 2);
    const auto [links, rechts] = tinte(gezeichnet(satz, kurz, Qt::AlignHCenter, 200));
    EXPECT_NEAR((links + rechts) / 2.0, 110, 2);

    // Whatever a name holds and however long it is, it stays in its box, and uses it.
    std::u16string lang;
    while (lang.size() < 500) {
        lang += u"Wanderung ";
    }
    for (const std::u16string& text : {lang, std::u16string(u"Garmisch-Partenkirchen und weiter"),
                                       std::u16string(u"u\u0308ber und unter Garmisch-Partenkirchen"),
                                       std::u16string(u"東京東京東京東京東京東京東京東京東京")}) {
        for (const double breite : {0.0, 5.0, 40.0, 107.0}) {
            const int ende = tinte(gezeichnet(satz, text, Qt::AlignRight, breite)).second;
            EXPECT_LE(ende, 10 + std::max(breite, satz.breite(u"…")) + 1);
            EXPECT_TRUE(breite < 40 || ende > 10 + breite - 20) << ende << " of " << breite;
        }
    }
}

TEST(SchriftsatzTest, keepsTheBeginningOfANameWhereverItBegins) {
    Schriftsatz satz(Schrift::mach(12.5), 12.5);
    // An ellipsis has no ink above the middle of the line; a name has.
    const auto hoch = [](const QImage& bild, int von, int bis) {
        for (int x = von; x <= bis; ++x) {
            for (int y = 0; y < 16; ++y) {
                if (qGray(bild.pixel(x, y)) < 160) {
                    return true;
                }
            }
        }
        return false;
    };
    for (const auto& [text, vonRechts] :
         {std::pair(u"Wanderung Wanderung Wanderung", false), std::pair(u"טיולטיולטיולטיולטיולטיולטיולטיול", true),
          std::pair(u"123 Wanderung Wanderung Wanderung", false)}) {
        const QImage bild = gezeichnet(satz, text, Qt::AlignLeft, 107);
        const auto [links, rechts] = tinte(bild);
        constexpr int kPunkte = 6;
        EXPECT_EQ(hoch(bild, links, links + kPunkte), !vonRechts) << QString::fromUtf16(text).toStdString();
        EXPECT_EQ(hoch(bild, rechts - kPunkte, rechts), vonRechts) << QString::fromUtf16(text).toStdString();
    }
}

}  // namespace
}  // namespace spurkiste
