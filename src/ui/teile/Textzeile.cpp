#include "ui/teile/Textzeile.h"

#include "ui/teile/KistePapier.h"

namespace spurkiste {

QString alsText(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString alsKurzhilfe(const QString& text) {
    return QStringLiteral("<qt>") + text.toHtmlEscaped() + QStringLiteral("</qt>");
}

void setzeKurzhilfe(QWidget& element, const QString& text) {
    element.setToolTip(text.isEmpty() ? text : alsKurzhilfe(text));
    if (element.accessibleDescription() != text) {  // else a screen reader is told of each refresh
        element.setAccessibleDescription(text);
    }
}

QLabel* neueTextzeile(const QColor& farbe, bool waehlbar, QWidget* eltern) {
    auto* zeile = new QLabel(eltern);
    zeile->setTextFormat(Qt::PlainText);
    QPalette palette = zeile->palette();
    palette.setColor(QPalette::WindowText, farbe);
    palette.setColor(QPalette::Highlight, KistePapier::mitDeckkraft(KistePapier::gold, 0.28));
    palette.setColor(QPalette::HighlightedText, KistePapier::tinte);
    zeile->setPalette(palette);
    if (waehlbar) {
        zeile->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    return zeile;
}

}  // namespace spurkiste
