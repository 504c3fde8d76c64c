#pragma once

#include <QColor>
#include <QFont>
#include <optional>
#include <string>

#include "ui/teile/Drueckbar.h"
#include "ui/teile/Schriftsatz.h"

namespace spurkiste {

/// A button in the style of the application: an icon, a text, an optional closing icon, on a rounded ground. Keeps
/// papier::kRingRand free on every side for the focus ring. Its accessible name is its text unless one is set.
class Knopf : public Drueckbar {
    Q_OBJECT

  public:
    /// Measures in logical pixels; icons by their boxes, 0 for none.
    struct Aussehen {
        double hoehe = 30;
        double radius = 9;
        double rand = 10;    ///< left and right of the content
        double abstand = 6;  ///< between icon and text
        double symbolKasten = 17;
        double schlussKasten = 0;      ///< of the closing icon
        double schlussAbstand = 4;     ///< between text and closing icon
        double schlussUeberstand = 0;  ///< how far that icon's own margin reaches into the padding
        double schriftgroesse = 12;
        QFont::Weight staerke = QFont::DemiBold;
        double sperrung = 0;
        QColor textFarbe;
        QColor symbolFarbe;
        QColor schlussFarbe;
        QColor grund = Qt::transparent;
        QColor rahmen = Qt::transparent;
        QColor ueberfahren = Qt::transparent;  ///< laid over the ground under the pointer
        QColor gedrueckt = Qt::transparent;    ///< laid over the ground while pressed or its menu is open
        bool ringAussen = false;               ///< the ground has the focus ring's colour
    };

    explicit Knopf(QWidget* eltern = nullptr);

    void setzeAussehen(const Aussehen& aussehen);
    /// The names of the icon before the text and of the one behind it; empty for none.
    void setzeSymbole(std::string symbol, std::string schluss = {});

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    [[nodiscard]] double inhaltsbreite() const;

    Aussehen aussehen_;
    mutable std::optional<Schriftsatz> satz_;  // remembers what it set; there from the first look on
    std::string symbol_;
    std::string schluss_;
};

}  // namespace spurkiste
