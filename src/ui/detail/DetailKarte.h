#pragma once

#include <QGridLayout>
#include <QWidget>
#include <span>
#include <vector>

#include "sicht/DetailTexte.h"
#include "ui/teile/Absatz.h"
#include "ui/teile/Schild.h"

namespace spurkiste {

/// A card of the detail panel: a title, a line, and rows of a caption and a value. GUI thread.
class DetailKarte final : public QWidget {
    Q_OBJECT

  public:
    /// With so many rows of text; before them, where there is one, a row that holds `element`, which it takes over.
    DetailKarte(std::size_t zeilen, QWidget* element, QWidget* eltern);

    /// Sets the title and the rows of text, as many as there are, and the caption of the element's row.
    void zeige(const QString& titel, std::span<const DetailTexte::Zeile> zeilen, const QString& elementSchild = {});
    /// Takes the fonts anew, after the language changed.
    void kleide();

    /// None: the height follows from the width, and asking the layout would answer for the narrowest one.
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    [[nodiscard]] Absatz* neuesSchild();

    Schild* titel_;
    QWidget* strich_;
    QGridLayout* reihen_;
    Absatz* elementSchild_ = nullptr;
    std::vector<Absatz*> schilder_;
    std::vector<Absatz*> werte_;
};

}  // namespace spurkiste
