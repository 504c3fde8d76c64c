#pragma once

#include <QWidget>

#include "ui/fenster/Hinweiszeile.h"
#include "ui/fenster/Leisezeile.h"
#include "ui/teile/Ladering.h"
#include "ui/teile/Schild.h"

namespace spurkiste {

/// The line at the bottom: how many files, how long together, whether a load runs, the notice, a quiet word, the
/// library's folder. The path gives way to both.
class Statusleiste final : public QWidget {
    Q_OBJECT

  public:
    explicit Statusleiste(QWidget* eltern = nullptr);

    /// The number of files and the total, as texts.
    void zeigeZahlen(const QString& dateien, const QString& summe);
    /// Whether a load runs, and how many files it has still to read.
    void zeigeLaden(bool laedt, std::size_t ausstehend);
    /// The notice; empty for none. `erneut`: it was given again.
    void zeigeHinweis(const QString& hinweis, bool erneut);
    /// Says for some seconds, beside the notice, what has been done; empty for nothing.
    void sage(const QString& text) { leise_->sage(text); }
    void zeigeOrdner(const QString& ordner);
    /// Takes the fonts anew, after the language changed.
    void kleide();

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    Schild* dateien_;
    Schild* summe_;
    Ladering* ring_;
    Hinweiszeile* hinweis_;
    Leisezeile* leise_;
    Schild* ordner_;
};

}  // namespace spurkiste
