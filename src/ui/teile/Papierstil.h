#pragma once

#include <QProxyStyle>

namespace spurkiste {

/// The style of what the toolkit draws by itself: tooltips are small cards, and menus look like ours. GUI thread.
class Papierstil final : public QProxyStyle {
    Q_OBJECT

  public:
    Papierstil() : QProxyStyle(QStringLiteral("Fusion")) {}

    /// The colours of the application, which is light whatever the desktop's are.
    [[nodiscard]] static QPalette palette();
    /// Gives tooltips their colours and font; again after the language changed, which chooses among fonts.
    static void kleideKurzhilfen();

    using QProxyStyle::polish;
    void polish(QWidget* element) override;
    void drawPrimitive(PrimitiveElement teil, const QStyleOption* option, QPainter* maler,
                       const QWidget* element) const override;
    [[nodiscard]] int pixelMetric(PixelMetric mass, const QStyleOption* option, const QWidget* element) const override;
    [[nodiscard]] int styleHint(StyleHint frage, const QStyleOption* option, const QWidget* element,
                                QStyleHintReturn* antwort) const override;
};

}  // namespace spurkiste
