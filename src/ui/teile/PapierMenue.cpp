#include "ui/teile/PapierMenue.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

namespace {

constexpr int kRadius = 11;
constexpr int kHaekchen = 16;

QString rgba(const QColor& farbe, double deckkraft = 1.0) {
    return QStringLiteral("rgba(%1,%2,%3,%4)").arg(farbe.red()).arg(farbe.green()).arg(farbe.blue()).arg(deckkraft);
}

QIcon haekchen(const QWidget& fuer, bool sichtbar) {
    if (sichtbar) {
        return Symbole::bild("checkmark", kHaekchen, KistePapier::goldDunkel, fuer.devicePixelRatioF());
    }
    QPixmap leer(kHaekchen, kHaekchen);  // keeps the place, so that all texts begin at the same column
    leer.fill(Qt::transparent);
    return leer;
}

}  // namespace

PapierMenue::PapierMenue(QWidget* eltern) : QMenu(eltern) {
    setFont(Schrift::mach(12.5, QFont::Medium));
    setStyleSheet(
        QStringLiteral("QMenu{background:%1;border:1px solid %2;border-radius:%3px;padding:5px}"
                       "QMenu::item{height:26px;min-width:150px;padding:0 18px 0 10px;border-radius:7px;color:%4}"
                       "QMenu::item:selected{background:%5}"
                       "QMenu::item:default{color:%7;font-weight:500}"
                       "QMenu::icon{left:10px}"
                       "QMenu::indicator{width:0;height:0}"
                       "QMenu::separator{height:1px;background:%6;margin:5px 10px}")
            .arg(rgba(KistePapier::karte), rgba(KistePapier::linie))
            .arg(kRadius)
            .arg(rgba(KistePapier::tinte), rgba(KistePapier::gold, 0.17), rgba(KistePapier::linie, 0.9),
                 rgba(KistePapier::rot)));
}

QAction* PapierMenue::fuegeWahlHinzu(const QString& text, bool gewaehlt) {
    QString sicher = text;
    QAction* wahl = addAction(haekchen(*this, gewaehlt), sicher.replace(QLatin1Char('&'), QStringLiteral("&&")));
    wahl->setCheckable(true);
    wahl->setChecked(gewaehlt);
    return wahl;
}

QAction* PapierMenue::fuegeLoeschenHinzu(const QString& text) {
    QAction* wahl = addAction(text);
    setDefaultAction(wahl);  // the only one of its kind that the style sheet can tell from the others
    return wahl;
}

QAction* PapierMenue::fuegeMitZeichenHinzu(const QString& text, std::string_view symbol) {
    QAction* wahl = addAction(text);
    wahl->setCheckable(true);  // for a screen reader; the icon is what eyes see
    if (!symbol.empty()) {
        wahl->setChecked(true);
        gezeichnet_ = wahl;
        symbol_ = symbol;
    }
    return wahl;
}

void PapierMenue::keyPressEvent(QKeyEvent* ereignis) {
    // The toolkit's menus know Home and End only when they scroll.
    const bool anfang = ereignis->key() == Qt::Key_Home;
    if ((anfang || ereignis->key() == Qt::Key_End) && !actions().isEmpty()) {
        setActiveAction(anfang ? actions().constFirst() : actions().constLast());
        return;
    }
    QMenu::keyPressEvent(ereignis);
}

void PapierMenue::paintEvent(QPaintEvent* ereignis) {
    QMenu::paintEvent(ereignis);
    if (gezeichnet_ != nullptr) {
        constexpr int rand = 10;
        const QRectF zeile = actionGeometry(gezeichnet_);
        QPainter maler(this);
        Symbole::zeichne(
            maler, QRectF(zeile.right() - rand - kHaekchen, zeile.center().y() - kHaekchen / 2.0, kHaekchen, kHaekchen),
            symbol_, KistePapier::goldDunkel);
    }
}

void PapierMenue::oeffneUnter(const QWidget& element) {
    constexpr int abstand = 4;
    const int rand = papier::kRingRand;
    popup(element.mapToGlobal(QPoint(rand, element.height() - rand + abstand)));
}

void PapierMenue::resizeEvent(QResizeEvent* ereignis) {
    QMenu::resizeEvent(ereignis);
    papier::schneideEcken(*this, kRadius);
}

}  // namespace spurkiste
