#pragma once

#include <QWidget>
#include <string_view>

#include "sicht/DetailTexte.h"
#include "ui/teile/Absatz.h"
#include "ui/teile/Schild.h"

namespace spurkiste {

/// A figure on a small card: caption and icon, the value, perhaps a line below. What is too long ends with an ellipsis
/// and is whole in a tooltip. GUI thread.
class Kachel final : public QWidget {
    Q_OBJECT

  public:
    explicit Kachel(QWidget* eltern = nullptr);

    void zeige(const DetailTexte::Kachel& kachel);
    /// Takes the fonts anew, after the language changed.
    void kleide();

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    void kuerze();

    Schild* titel_;
    Absatz* wert_;
    Schild* zusatz_;
    QString ganzerWert_;
    std::string_view symbol_;
};

}  // namespace spurkiste
