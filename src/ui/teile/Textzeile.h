#pragma once

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QString>
#include <QStringList>
#include <string_view>

namespace spurkiste {

/// Text as labels show it: bytes that are not UTF-8 become replacement characters, so that every name can be shown.
[[nodiscard]] QString alsText(std::string_view text);

/// Gives the widget's text a colour, on no ground of its own; what is marked in it lies on gold.
void faerbeText(QWidget& element, const QColor& farbe);

/// The lines that a text takes at a width in points: broken between words where that is possible, and together the
/// text.
[[nodiscard]] QStringList umbrochen(const QString& text, const QFont& schrift, int breite);

/// A text for a tooltip, which would otherwise take what looks like markup for it, and break lines after a few words;
/// here lines are as long as can be read well.
[[nodiscard]] QString alsKurzhilfe(const QString& text);

/// Gives the widget a tooltip of plain text, which a screen reader reads as plain text too; none for an empty one.
void setzeKurzhilfe(QWidget& element, const QString& text);

/// A label of plain text in one colour, which can be marked and copied, by mouse and keyboard.
[[nodiscard]] QLabel* neueTextzeile(const QColor& farbe, QWidget* eltern);

}  // namespace spurkiste
