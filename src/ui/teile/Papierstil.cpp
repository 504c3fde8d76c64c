#include "ui/teile/Papierstil.h"

#include <QBitmap>
#include <QMenu>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Schwebekarte.h"

namespace spurkiste {

namespace {

constexpr double kRadius = 7;
constexpr double kSchrift = 12;
constexpr double kMenueschrift = 12.5;
constexpr double kUeberfahren = 0.17;
constexpr int kRand = 6;  // around a tooltip's text

/// The class of tooltips is the toolkit's own affair: only its name is known.
bool istKurzhilfe(const QWidget* element) {
    return element != nullptr && element->inherits("QTipLabel");
}

bool scheintDurch(const QWidget* element) {
    return element != nullptr && element->testAttribute(Qt::WA_TranslucentBackground);
}

/// A menu of the toolkit's own, as the chooser of files has them; ours paint themselves.
void kleideMenue(QMenu& menue) {
    const bool gemischt = Schwebekarte::wirdGemischt();
    if (gemischt) {  // else the corners would be black
        menue.setWindowFlags(menue.windowFlags() | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
        menue.setAttribute(Qt::WA_TranslucentBackground);
    }
    menue.setFont(Schrift::mach(kMenueschrift, QFont::Medium));
    menue.setStyleSheet(
        QStringLiteral("QMenu{background:%1;border:1px solid %2;border-radius:%3px;padding:5px}"
                       "QMenu::item{height:26px;padding:0 12px 0 32px;border-radius:%4px;color:%5}"
                       "QMenu::item:selected{background:%6}QMenu::item:disabled{color:%7;background:transparent}"
                       "QMenu::separator{height:1px;background:%2;margin:5px 10px}")
            .arg(KistePapier::karte.name(), KistePapier::linie.name())
            .arg(gemischt ? Schwebekarte::kRadius : 0)
            .arg(kRadius)
            .arg(KistePapier::tinte.name(),
                 KistePapier::mitDeckkraft(KistePapier::gold, kUeberfahren).name(QColor::HexArgb),
                 KistePapier::gravur.name()));
}

}  // namespace

QPalette Papierstil::palette() {
    QPalette farben(KistePapier::kapsel, KistePapier::buehne);
    farben.setColor(QPalette::Window, KistePapier::buehne);
    farben.setColor(QPalette::WindowText, KistePapier::tinte);
    farben.setColor(QPalette::Base, KistePapier::karte);
    farben.setColor(QPalette::Text, KistePapier::tinte);
    farben.setColor(QPalette::ButtonText, KistePapier::tinte);
    farben.setColor(QPalette::Highlight, KistePapier::goldDunkel);
    farben.setColor(QPalette::HighlightedText, KistePapier::karte);
    farben.setColor(QPalette::ToolTipBase, KistePapier::karte);
    farben.setColor(QPalette::ToolTipText, KistePapier::tinte);
    farben.setColor(QPalette::PlaceholderText, KistePapier::tinteLeise);
    return farben;
}

void Papierstil::kleideKurzhilfen() {
    QToolTip::setPalette(palette());
    QToolTip::setFont(Schrift::mach(kSchrift));
}

void Papierstil::polish(QWidget* element) {
    QProxyStyle::polish(element);
    auto* menue = qobject_cast<QMenu*>(element);
    if (menue != nullptr && menue->styleSheet().isEmpty()) {  // ours have measures of their own
        kleideMenue(*menue);
    }
    if (istKurzhilfe(element) && Schwebekarte::wirdGemischt()) {
        element->setAttribute(Qt::WA_TranslucentBackground);
    }
}

void Papierstil::drawPrimitive(PrimitiveElement teil, const QStyleOption* option, QPainter* maler,
                               const QWidget* element) const {
    if (teil != PE_PanelTipLabel) {
        QProxyStyle::drawPrimitive(teil, option, maler, element);
        return;
    }
    const QRectF form = option->rect;
    if (scheintDurch(element)) {
        papier::form(*maler, form, kRadius, KistePapier::karte, KistePapier::linie);
    } else {
        maler->fillRect(form, KistePapier::linie);  // what the mask leaves of the corners is border
        papier::form(*maler, form.adjusted(1, 1, -1, -1), kRadius - 1, KistePapier::karte, Qt::transparent);
    }
}

int Papierstil::pixelMetric(PixelMetric mass, const QStyleOption* option, const QWidget* element) const {
    return mass == PM_ToolTipLabelFrameWidth ? kRand : QProxyStyle::pixelMetric(mass, option, element);
}

int Papierstil::styleHint(StyleHint frage, const QStyleOption* option, const QWidget* element,
                          QStyleHintReturn* antwort) const {
    constexpr int deckend = 255;
    if (frage == SH_ToolTipLabel_Opacity) {
        return deckend;
    }
    if (frage != SH_ToolTip_Mask) {
        return QProxyStyle::styleHint(frage, option, element, antwort);
    }
    auto* maske = qstyleoption_cast<QStyleHintReturnMask*>(antwort);
    if (maske == nullptr || option == nullptr || scheintDurch(element)) {
        return 0;
    }
    QBitmap form(option->rect.size());
    form.clear();
    QPainter maler(&form);
    maler.setPen(Qt::NoPen);
    maler.setBrush(Qt::color1);
    maler.drawRoundedRect(form.rect(), kRadius, kRadius);
    maler.end();
    maske->region = QRegion(form);
    return 1;
}

}  // namespace spurkiste
