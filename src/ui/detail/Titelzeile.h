#pragma once

#include <QColor>
#include <QLabel>

namespace spurkiste {

/// A title of at most two lines: what does not fit ends with an ellipsis, and the tooltip has all of it. GUI thread.
class Titelzeile final : public QLabel {
    Q_OBJECT

  public:
    explicit Titelzeile(const QColor& farbe, QWidget* eltern = nullptr);

    void zeige(const QString& text);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int breite) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    [[nodiscard]] QStringList zeilen(int breite) const;
};

}  // namespace spurkiste
