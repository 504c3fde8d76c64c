#pragma once

#include <QString>
#include <QWidget>

#include "ui/teile/Schild.h"

namespace spurkiste {

/// The notice to the user in the status line. It hides itself while there is none. Screen readers read a notification
/// out when it appears, so that one which takes another's place, or is given again, appears anew. GUI thread.
class Hinweiszeile final : public QWidget {
    Q_OBJECT

  public:
    explicit Hinweiszeile(QWidget* eltern = nullptr);

    /// Shows the notice; empty for none. `erneut`: it was given again, though it may be the one that is shown.
    void zeige(const QString& hinweis, bool erneut);
    /// Takes the fonts anew, after the language changed.
    void kleide(const QFont& schrift) { text_->setFont(schrift); }

  private:
    Schild* text_;
};

}  // namespace spurkiste
