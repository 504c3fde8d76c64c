#include "ui/teile/Schrift.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>

#include "i18n/AppSprache.h"

namespace spurkiste {

namespace {

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
    constexpr double punkteProZoll = 72.0;
    QFont schrift;
    schrift.setFamilies({QStringLiteral("Lato"), QStringLiteral("DejaVu Sans"), cjkFamilie()});
    // Only point sizes take fractions; the screen's logical resolution turns them back into the pixels meant here.
    const QScreen* schirm = QGuiApplication::primaryScreen();
    const double aufloesung = schirm == nullptr ? 96.0 : schirm->logicalDotsPerInchY();
    schrift.setPointSizeF(groesse * punkteProZoll / aufloesung);
    schrift.setWeight(staerke);
    if (sperrung > 0.0) {
        schrift.setLetterSpacing(QFont::AbsoluteSpacing, sperrung);
    }
    return schrift;
}

}  // namespace spurkiste
