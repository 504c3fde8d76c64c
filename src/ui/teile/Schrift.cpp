#include "ui/teile/Schrift.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>

#include "i18n/AppSprache.h"

namespace spurkiste {

namespace {

constexpr double kPunkteProZoll = 72.0;

/// How many logical pixels the toolkit gives an inch.
double aufloesung() {
    const QScreen* schirm = QGuiApplication::primaryScreen();
    return schirm == nullptr ? 96.0 : schirm->logicalDotsPerInchY();
}

/// The same characters are written differently in these languages; without a hint Japanese forms are shown.
QString cjkFamilie() {
    const std::string code = AppSprache::code();
    if (code == "ko") {
        return QStringLiteral("Noto Sans CJK KR");
    }
    if (code == "zh-Hans") {
        return QStringLiteral("Noto Sans CJK SC");
    }
    if (code == "zh-Hant") {
        return QStringLiteral("Noto Sans CJK TC");
    }
    return QStringLiteral("Noto Sans CJK JP");
}

}  // namespace

QFont Schrift::mach(double groesse, QFont::Weight staerke, double sperrung) {
    QFont schrift;
    schrift.setFamilies({QStringLiteral("Lato"), QStringLiteral("DejaVu Sans"), cjkFamilie()});
    // Only point sizes take fractions; the screen's logical resolution turns them back into the pixels meant here.
    schrift.setPointSizeF(groesse * kPunkteProZoll / aufloesung());
    schrift.setWeight(staerke);
    if (sperrung > 0.0) {
        schrift.setLetterSpacing(QFont::AbsoluteSpacing, sperrung);
    }
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    // Lato has two ideas of how high its lines are. Older versions of the toolkit take the typographic one by
    // themselves.
    schrift.setStyleStrategy(QFont::PreferTypoLineMetrics);
#endif
    return schrift;
}

double Schrift::groesse(const QFont& schrift) {
    return schrift.pointSizeF() * aufloesung() / kPunkteProZoll;
}

int Schrift::zeilenhoehe(const QWidget& element) {
    constexpr double verhaeltnis = 1.2;
    constexpr double spielraum = 0.01;  // what a size loses on its way through points
    return static_cast<int>(std::ceil(verhaeltnis * groesse(element.font()) - spielraum));
}

}  // namespace spurkiste
