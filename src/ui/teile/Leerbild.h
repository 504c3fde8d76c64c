#pragma once

#include <QWidget>
#include <string>

namespace spurkiste {

/// What stands where there is nothing to show: an icon, a title, a sentence, centred. Lets clicks and drags through.
class Leerbild final : public QWidget {
    Q_OBJECT

  public:
    enum class Form {
        zeichen,  ///< a large quiet icon
        kreis,    ///< a golden icon in a circle
    };

    Leerbild(Form form, std::string symbol, QWidget* eltern = nullptr);

    /// `satz` may have line breaks.
    void zeige(const QString& titel, const QString& satz);
    /// Takes the fonts anew, after the language changed.
    void kleide();

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    class Zeilen;

    Form form_;
    std::string symbol_;
    Zeilen* titel_;
    Zeilen* satz_;
};

}  // namespace spurkiste
