#pragma once

#include <QColor>
#include <QLabel>
#include <QString>
#include <string>

namespace spurkiste {

/// Text as labels show it: bytes that are not UTF-8 become replacement characters, so that every name can be shown.
[[nodiscard]] QString alsText(const std::string& text);

/// A text for a tooltip, which would otherwise take what looks like markup for it; long ones are broken into lines.
[[nodiscard]] QString alsKurzhilfe(const QString& text);

/// Gives the widget a tooltip of plain text, which a screen reader reads as plain text too; none for an empty one.
void setzeKurzhilfe(QWidget& element, const QString& text);

/// A label of plain text in one colour. `waehlbar` lets the text be marked and copied, by mouse and keyboard.
[[nodiscard]] QLabel* neueTextzeile(const QColor& farbe, bool waehlbar, QWidget* eltern);

}  // namespace spurkiste
