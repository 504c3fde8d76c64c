#pragma once

#include <QFont>
#include <QString>
#include <QTimer>
#include <QWidget>

#include "ui/teile/Schild.h"

namespace spurkiste {

/// A quiet word in the status line: that something has been done which cannot be seen by itself. It goes after some
/// seconds. Screen readers read it out when it appears, and again when the same is said once more. GUI thread.
class Leisezeile final : public QWidget {
    Q_OBJECT

  public:
    explicit Leisezeile(QWidget* eltern = nullptr);

    /// Says this, in place of what was said before; empty for nothing.
    void sage(const QString& text);
    /// Takes the fonts anew, after the language changed.
    void kleide(const QFont& schrift) { text_->setFont(schrift); }

  private:
    Schild* text_;
    QTimer dauer_;
};

}  // namespace spurkiste
