#include "ui/teile/Textzeile.h"

#include "ui/teile/KistePapier.h"

namespace spurkiste {

QString alsText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void faerbeText(QWidget& element, const QColor& farbe) {
    QPalette palette = element.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::WindowText, farbe);
    palette.setColor(QPalette::Text, farbe);
    palette.setColor(QPalette::Highlight, KistePapier::mitDeckkraft(KistePapier::gold, 0.28));
    palette.setColor(QPalette::HighlightedText, KistePapier::tinte);
    element.setPalette(palette);
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

QLabel* neueTextzeile(const QColor& farbe, QWidget* eltern) {
    auto* zeile = new QLabel(eltern);
    zeile->setTextFormat(Qt::PlainText);
    faerbeText(*zeile, farbe);
    zeile->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return zeile;
}

}  // namespace spurkiste
