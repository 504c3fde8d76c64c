#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTextEdit>

/// The menu of a text that can be edited or marked, with the toolkit's own commands for it: in the look of the
/// application and in its language. GUI thread.
namespace spurkiste::textmenue {

/// From now on the widget has this menu in place of the toolkit's, by mouse and by keyboard.
void kleide(QLineEdit& feld);
void kleide(QTextEdit& text);
void kleide(QLabel& schild);

}  // namespace spurkiste::textmenue
