#include "ui/teile/Schatten.h"

#include <QImage>
#include <QPixmap>
#include <QPixmapCache>
#include <QSize>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace spurkiste {

namespace {

/// How far the blur is seen.
int reichweite(double sigma) {
    return static_cast<int>(std::ceil(3.0 * sigma));
}

/// One line of a picture, replaced by its running mean.
void mittle(std::vector<float>& linie, int breite) {
    const std::vector<float> vorher = linie;
    const auto anzahl = static_cast<int>(linie.size());
    const auto wert = [&](int stelle) {
        return stelle >= 0 && stelle < anzahl ? vorher[static_cast<std::size_t>(stelle)] : 0.0F;
    };
    const int halb = breite / 2;
    float summe = 0.0F;
    for (int stelle = -halb; stelle < breite - halb - 1; ++stelle) {
        summe += wert(stelle);
    }
    for (int stelle = 0; stelle < anzahl; ++stelle) {
        summe += wert(stelle + breite - halb - 1);
        linie[static_cast<std::size_t>(stelle)] = summe / static_cast<float>(breite);
        summe -= wert(stelle - halb);
    }
}

/// Three running means come close to a Gaussian. Their widths are odd, so that the picture does not move, and such that
/// their variances, (width² - 1) / 12 each, together come closest to the Gaussian's.
void verwische(std::vector<float>& linie, double sigma) {
    const double ideal = std::sqrt(4.0 * sigma * sigma + 1.0);
    const int schmal = (static_cast<int>(ideal) - 1) / 2 * 2 + 1;
    const double fehlt = 12.0 * sigma * sigma - 3.0 * (schmal * schmal - 1.0);
    const auto breite = static_cast<int>(std::lround(fehlt / (4.0 * schmal + 4.0)));  // how many have to be wider by 2
    for (int mal = 0; mal < 3; ++mal) {
        mittle(linie, mal < breite ? schmal + 2 : schmal);
    }
}

/// The blurred shape in one colour, with room for the blur around it.
QImage male(const QSize& groesse, double radius, double sigma, const QColor& farbe) {
    const int rand = reichweite(sigma);
    QImage form(groesse + QSize(2 * rand, 2 * rand), QImage::Format_Alpha8);
    form.fill(0);
    QPainter maler(&form);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Qt::NoPen);
    maler.setBrush(Qt::black);
    maler.drawRoundedRect(QRectF(rand, rand, groesse.width(), groesse.height()), radius, radius);
    maler.end();

    const auto breite = static_cast<std::size_t>(form.width());
    const auto hoehe = static_cast<std::size_t>(form.height());
    std::vector<float> deckung(breite * hoehe);
    std::vector<float> linie(breite);
    for (std::size_t y = 0; y < hoehe; ++y) {
        const uchar* quelle = form.constScanLine(static_cast<int>(y));
        std::copy(quelle, quelle + breite, linie.begin());
        verwische(linie, sigma);
        std::copy(linie.begin(), linie.end(), deckung.begin() + static_cast<std::ptrdiff_t>(y * breite));
    }
    QImage bild(form.size(), QImage::Format_ARGB32);
    linie.resize(hoehe);
    for (std::size_t x = 0; x < breite; ++x) {
        for (std::size_t y = 0; y < hoehe; ++y) {
            linie[y] = deckung[y * breite + x];
        }
        verwische(linie, sigma);
        for (std::size_t y = 0; y < hoehe; ++y) {
            QColor punkt = farbe;
            punkt.setAlphaF(std::clamp(farbe.alphaF() * linie[y] / 255.0F, 0.0F, 1.0F));
            bild.setPixelColor(static_cast<int>(x), static_cast<int>(y), punkt);
        }
    }
    return bild.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace

void Schatten::zeichne(QPainter& maler, const QRectF& kasten, double radius) const {
    // What is larger than its corners and their blur is stretched in the middle.
    const int rand = reichweite(sigma);
    const int ecke = static_cast<int>(std::ceil(radius)) + rand;
    const QSize groesse = kasten.size().toSize().boundedTo(QSize(2 * ecke + 1, 2 * ecke + 1));
    const QString schluessel = QStringLiteral("schatten/%1/%2/%3/%4/%5")
                                   .arg(groesse.width())
                                   .arg(groesse.height())
                                   .arg(radius)
                                   .arg(sigma)
                                   .arg(farbe.rgba64(), 0, 16);
    QPixmap bild;
    if (!QPixmapCache::find(schluessel, &bild)) {
        bild = QPixmap::fromImage(male(groesse, radius, sigma, farbe));
        QPixmapCache::insert(schluessel, bild);
    }

    const QRectF ziel = kasten.translated(0, abwaerts).adjusted(-rand, -rand, rand, rand);
    const auto teile = [](double anfang, double ende, int laenge) {
        const double stueck = (laenge - 1) / 2.0;  // both corners with their blur; between them one pixel to stretch
        return std::array<std::array<double, 4>, 3>{{{anfang, anfang + stueck, 0.0, stueck},
                                                     {anfang + stueck, ende - stueck, stueck, stueck + 1.0},
                                                     {ende - stueck, ende, stueck + 1.0, double(laenge)}}};
    };
    maler.save();
    maler.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const auto& [zielX, zielX2, x, x2] : teile(ziel.left(), ziel.right(), bild.width())) {
        for (const auto& [zielY, zielY2, y, y2] : teile(ziel.top(), ziel.bottom(), bild.height())) {
            maler.drawPixmap(QRectF(zielX, zielY, zielX2 - zielX, zielY2 - zielY), bild, QRectF(x, y, x2 - x, y2 - y));
        }
    }
    maler.restore();
}

}  // namespace spurkiste
