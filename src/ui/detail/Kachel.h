#pragma once

#include <QLabel>
#include <QWidget>
#include <string_view>

#include "ui/detail/DetailTexte.h"
#include "ui/detail/Schild.h"

namespace spurkiste {

/// A figure on a small card: caption and icon, the value, perhaps a line below. GUI thread.
class Kachel final : public QWidget {
    Q_OBJECT

  public:
    explicit Kachel(QWidget* eltern = nullptr);

    void zeige(const DetailTexte::Kachel& kachel);
    /// Takes the fonts anew, after the language changed.
    void kleide();

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    Schild* titel_;
    QLabel* wert_;
    Schild* zusatz_;
    std::string_view symbol_;
};

}  // namespace spurkiste
