#pragma once

#include <QRect>
#include <functional>
#include <optional>

#include "track/GpxMetadaten.h"
#include "ui/teile/Drueckbar.h"
#include "ui/teile/SportKapsel.h"

namespace spurkiste {

/// Shows a record's sport and lets it be changed: a small capsule, whose text is shortened where there is little room,
/// or the larger one of the header. It keeps nothing of its own: the choice is reported, and what it shows changes with
/// the record. Keeps papier::kRingRand free for the focus ring. GUI thread.
class SportMenue final : public Drueckbar {
    Q_OBJECT

  public:
    /// What a choice in the menu does.
    using Wahl = std::function<void(GpxSportart)>;

    /// `ausfuehrlich` makes it the one of the header.
    explicit SportMenue(bool ausfuehrlich, QWidget* eltern = nullptr);

    /// Shows a record's sport; the record must not be null. To be called again after the language changed.
    void zeige(const Eintrag& eintrag);

    /// Opens the menu of all sports below a place on the screen, without waiting for it to close. The sport that the
    /// record has carries a check mark, a suggested one a magic wand. Returns the menu, which deletes itself.
    static QWidget* oeffne(const GpxMetadaten& eintrag, QWidget* eltern, const QRect& unter, const Wahl& wahl);

    /// What the sport is: the one that the file names, if it is known, else the suggestion.
    [[nodiscard]] static std::optional<GpxSportart> aktuelleSportart(const GpxMetadaten& eintrag);

    /// The tooltip of whatever shows the record's sport.
    [[nodiscard]] static QString kurzhilfe(const GpxMetadaten& eintrag);

    /// A tooltip where the sport is too long for what shows it: its whole name first.
    [[nodiscard]] static QString mitName(const QString& sport, const QString& hilfe);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// A sport was chosen for the record shown.
    void gewaehlt(const spurkiste::Eintrag& eintrag, spurkiste::GpxSportart art);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    [[nodiscard]] SportKapsel::Inhalt inhalt() const;
    [[nodiscard]] bool istGekuerzt() const;
    void erklaere();
    void oeffneHier();
    void maleAusfuehrlich(QPainter& maler, const QRectF& kasten) const;

    bool ausfuehrlich_;
    Eintrag eintrag_;
    std::u16string anzeige_;
    QString ueberzeile_;
    mutable Schriftsatz oben_;
    mutable Schriftsatz unten_;
    mutable SportKapsel kapsel_;  // measuring fills its memory; what it answers stays the same
};

}  // namespace spurkiste
