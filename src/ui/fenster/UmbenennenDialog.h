#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QString>
#include <functional>

#include "track/GpxMetadaten.h"
#include "ui/teile/Knopf.h"

namespace spurkiste {

/// The sheet over a window in which a file gets another name. A child of the window, not a window of its own: it lays
/// itself over the whole of it and keeps keyboard and mouse from what is below. Deletes itself when it is closed; the
/// parent must be shown. It knows no rules for names but that a blank one is none. GUI thread.
class UmbenennenDialog final : public QDialog {
    Q_OBJECT

  public:
    /// `aktion` receives the name as it was typed.
    UmbenennenDialog(const Eintrag& eintrag, std::function<void(const QString&)> aktion, QWidget* eltern);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    bool eventFilter(QObject* quelle, QEvent* ereignis) override;
    bool focusNextPrevChild(bool weiter) override;

  private:
    void ordneAn();
    void bestaetige();
    [[nodiscard]] bool istBenannt() const;

    std::function<void(const QString&)> aktion_;
    QWidget* blatt_;
    QLineEdit* name_;
    Knopf* abbrechen_;
    Knopf* umbenennen_;
};

}  // namespace spurkiste
