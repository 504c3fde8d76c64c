#include "ui/teile/Symbole.h"

#include <QFile>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

namespace spurkiste {

namespace {

QPixmap rendere(const QString& name, int seite, const QColor& farbe, double pixelverhaeltnis) {
    QPixmap bild(seite, seite);
    bild.fill(Qt::transparent);
    QFile datei(QStringLiteral(":/symbole/%1.svg").arg(name));
    if (datei.open(QIODevice::ReadOnly)) {
        QSvgRenderer zeichner(datei.readAll());
        QPainter maler(&bild);
        zeichner.render(&maler, QRectF(0, 0, seite, seite));
        maler.setCompositionMode(QPainter::CompositionMode_SourceIn);
        maler.fillRect(bild.rect(), farbe);
    }
    bild.setDevicePixelRatio(pixelverhaeltnis);
    return bild;
}

}  // namespace

QPixmap Symbole::bild(std::string_view name, double kasten, const QColor& farbe, double pixelverhaeltnis) {
    const int seite = std::max(1, static_cast<int>(std::lround(kasten * pixelverhaeltnis)));
    const QString kurz = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    const QString schluessel =
        QStringLiteral("symbol/%1/%2/%3/%4").arg(kurz).arg(seite).arg(farbe.rgba64(), 0, 16).arg(pixelverhaeltnis);
    QPixmap bild;
    if (!QPixmapCache::find(schluessel, &bild)) {
        bild = rendere(kurz, seite, farbe, pixelverhaeltnis);
        QPixmapCache::insert(schluessel, bild);
    }
    return bild;
}

void Symbole::zeichne(QPainter& maler, const QRectF& kasten, std::string_view name, const QColor& farbe) {
    const double verhaeltnis = maler.device()->devicePixelRatioF();
    const double seite = std::min(kasten.width(), kasten.height());
    zeichne(maler, kasten, seite, bild(name, seite, farbe, verhaeltnis));
}

void Symbole::zeichne(QPainter& maler, const QRectF& kasten, double seite, const QPixmap& bild) {
    const double verhaeltnis = maler.device()->devicePixelRatioF();
    const auto rund = [&](double wert) { return std::round(wert * verhaeltnis) / verhaeltnis; };
    const QPointF mitte = kasten.center();
    maler.drawPixmap(QPointF(rund(mitte.x() - seite / 2), rund(mitte.y() - seite / 2)), bild);
}

}  // namespace spurkiste
