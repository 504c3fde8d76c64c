#include "ui/fenster/Hauptteiler.h"

#include <QSplitterHandle>
#include <algorithm>
#include <utility>

#include "ui/teile/KistePapier.h"

namespace spurkiste {

namespace {

/// A line of one pixel, and around it room for the pointer to take it.
class Griff final : public QSplitterHandle {
  public:
    explicit Griff(QSplitter* teiler) : QSplitterHandle(Qt::Horizontal, teiler) { setAttribute(Qt::WA_Hover); }

  protected:
    void resizeEvent(QResizeEvent* ereignis) override {
        QWidget::resizeEvent(ereignis);  // the toolkit's own would leave less room, and cut off the rest
        constexpr int links = 3;
        constexpr int rechts = 4;
        setContentsMargins(links, 0, rechts, 0);
    }
    void paintEvent(QPaintEvent* /*ereignis*/) override {
        if (underMouse()) {
            QPainter(this).fillRect(contentsRect(), KistePapier::linie);
        }
    }
};

}  // namespace

Hauptteiler::Hauptteiler(std::function<void(QPainter&)> schatten, QWidget* eltern)
    : QSplitter(Qt::Horizontal, eltern), schatten_(std::move(schatten)) {
    setHandleWidth(1);
    setChildrenCollapsible(false);
}

QSplitterHandle* Hauptteiler::createHandle() {
    return new Griff(this);
}

void Hauptteiler::setzeMindestensLinks(int breite) {
    mindestensLinks_ = breite;
    widget(0)->setMinimumWidth(breite);
}

QSize Hauptteiler::minimumSizeHint() const {
    const QSize jetzt = QSplitter::minimumSizeHint();
    return {jetzt.width() - widget(0)->minimumWidth() + mindestensLinks_, jetzt.height()};
}

void Hauptteiler::resizeEvent(QResizeEvent* ereignis) {
    const int platz = width() - handleWidth() - widget(1)->minimumWidth();
    widget(0)->setMinimumWidth(std::clamp(platz, 1, mindestensLinks_));
    QSplitter::resizeEvent(ereignis);
}

void Hauptteiler::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.fillRect(rect(), KistePapier::buehne);
    schatten_(maler);
}

}  // namespace spurkiste
