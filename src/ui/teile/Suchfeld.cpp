#include "ui/teile/Suchfeld.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"
#include "ui/teile/Textmenue.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kHoehe = 30;
constexpr double kRadius = 15;
constexpr int kLupe = 16;
constexpr int kRand = 11;    // before the glass
constexpr int kAbstand = 8;  // between glass and text
constexpr int kLeeren = 15;

}  // namespace

/// The button inside the field.
class Suchfeld::Leeren final : public QAbstractButton {
  public:
    explicit Leeren(QWidget* eltern) : QAbstractButton(eltern) {
        setFocusPolicy(Qt::NoFocus);  // Escape does the same on the keyboard
        setCursor(Qt::ArrowCursor);
        setFixedSize(kHoehe, kHoehe);
        setAccessibleName(QStringLiteral("Suche leeren"));
        setToolTip(QStringLiteral("Suche leeren"));
        hide();
    }

  protected:
    void paintEvent(QPaintEvent* /*ereignis*/) override {
        QPainter maler(this);
        const QRectF kasten((width() - kLeeren) / 2.0, (height() - kLeeren) / 2.0, kLeeren, kLeeren);
        Symbole::zeichne(maler, kasten, "xmark.circle.fill", KistePapier::gravur);
    }
};

Suchfeld::Suchfeld(QWidget* eltern) : QLineEdit(eltern), leeren_(new Leeren(this)) {
    setFrame(false);
    setFont(Schrift::mach(12.5));
    setAcceptDrops(false);  // files dropped on it are for the window, not their names for the search
    setPlaceholderText(QStringLiteral("Suchen"));
    setAccessibleName(QStringLiteral("Suchen"));
    setFixedHeight(kHoehe + 2 * papier::kRingRand);
    setTextMargins(papier::kRingRand + kRand + kLupe + kAbstand - 3, 0, papier::kRingRand + kHoehe, 0);
    faerbeText(*this, KistePapier::tinte);
    textmenue::kleide(*this);
    connect(leeren_, &QAbstractButton::clicked, this, &QLineEdit::clear);
    connect(this, &QLineEdit::textChanged, leeren_,
            [this](const QString& neu) { leeren_->setVisible(!neu.isEmpty()); });
}

void Suchfeld::paintEvent(QPaintEvent* ereignis) {
    {
        QPainter maler(this);
        const QRectF kasten = papier::ohneRing(*this);
        papier::form(maler, kasten, kRadius, KistePapier::karte, KistePapier::mitDeckkraft(KistePapier::linie, 0.9));
        if (hasFocus()) {
            papier::fokusring(maler, kasten, kRadius);
        }
        Symbole::zeichne(maler, QRectF(kasten.left() + kRand, kasten.center().y() - kLupe / 2.0, kLupe, kLupe),
                         "magnifyingglass", KistePapier::gravur);
    }
    QLineEdit::paintEvent(ereignis);
}

void Suchfeld::keyPressEvent(QKeyEvent* ereignis) {
    if (ereignis->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        return;
    }
    QLineEdit::keyPressEvent(ereignis);
    const bool allein = (ereignis->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int taste = ereignis->key();
    if (allein && (taste == Qt::Key_Down || taste == Qt::Key_Return || taste == Qt::Key_Enter)) {
        ereignis->accept();  // else the window would have it, too
        Q_EMIT verlassen();
    }
}

void Suchfeld::resizeEvent(QResizeEvent* ereignis) {
    QLineEdit::resizeEvent(ereignis);
    leeren_->move(width() - papier::kRingRand - kHoehe, papier::kRingRand);
}

}  // namespace spurkiste
