#include "ui/fenster/Dateiablage.h"

#include <QPainter>
#include <QPen>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

namespace {

constexpr double kSchleier = 0.86;
constexpr int kRand = 10;
constexpr double kRadius = 18;
constexpr double kStrich = 2;
constexpr double kStrichlaenge = 9;
constexpr double kSymbol = 42;
constexpr double kAbstand = 12;
constexpr double kSchriftgroesse = 20;
constexpr double kZeilenhoehe = 24;

}  // namespace

Dateiablage::Dateiablage(QWidget* eltern) : QWidget(eltern) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(QStringLiteral("GPX-Dateien ablegen"));
    hide();
}

void Dateiablage::zeigeUeber(const QRect& flaeche) {
    setGeometry(flaeche);
    raise();
    show();
}

void Dateiablage::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.fillRect(rect(), KistePapier::mitDeckkraft(KistePapier::buehne, kSchleier));
    maler.setRenderHint(QPainter::Antialiasing);
    QPen stift(KistePapier::gold, kStrich);
    stift.setCapStyle(Qt::FlatCap);
    stift.setDashPattern({kStrichlaenge / kStrich, kStrichlaenge / kStrich});  // in widths of the pen
    maler.setPen(stift);
    const double innen = kRand + kStrich / 2;
    maler.drawRoundedRect(QRectF(rect()).adjusted(innen, innen, -innen, -innen), kRadius - kStrich / 2,
                          kRadius - kStrich / 2);
    const double oben = (height() - kSymbol - kAbstand - kZeilenhoehe) / 2;
    Symbole::zeichne(maler, QRectF((width() - kSymbol) / 2, oben, kSymbol, kSymbol), "square.and.arrow.down",
                     KistePapier::goldDunkel);
    maler.setFont(Schrift::mach(kSchriftgroesse, QFont::Bold));
    maler.setPen(KistePapier::goldDunkel);
    maler.drawText(QRectF(0, oben + kSymbol + kAbstand, width(), kZeilenhoehe), Qt::AlignCenter, accessibleName());
}

}  // namespace spurkiste
