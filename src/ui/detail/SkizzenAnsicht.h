#pragma once

#include <QImage>
#include <QWidget>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// The small picture of a track on its card: the line, a green dot at the start, a red one at the finish, and a badge
/// that says whether it is a loop. GUI thread.
class SkizzenAnsicht final : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kHoehe = 224;  ///< of the card, in logical pixels

    explicit SkizzenAnsicht(QWidget* eltern = nullptr);

    /// Shows a record; null shows an empty card.
    void zeige(const Eintrag& eintrag);

    /// Paints the shadow of the card, which is the widget's rectangle; for whoever paints the ground below it.
    static void zeichneSchatten(QPainter& maler, const QRect& karte);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    void male();
    void maleMarke(QPainter& maler) const;

    Eintrag eintrag_;
    QImage bild_;  // the card as it was painted last; empty when it has to be painted anew
};

}  // namespace spurkiste
