#include "ui/detail/Leerbild.h"

#include <QPainter>
#include <QVBoxLayout>
#include <utility>

#include "ui/detail/KistePapier.h"
#include "ui/detail/Papier.h"
#include "ui/detail/Schrift.h"
#include "ui/detail/Symbole.h"

namespace spurkiste {

namespace {

constexpr double kZeichen = 52;
constexpr double kKreis = 72;
constexpr double kImKreis = 36;

QLabel* mitte(const QColor& farbe, QWidget* eltern) {
    auto* schild = new QLabel(eltern);
    schild->setTextFormat(Qt::PlainText);
    schild->setAlignment(Qt::AlignHCenter);
    QPalette palette = schild->palette();
    palette.setColor(QPalette::WindowText, farbe);
    schild->setPalette(palette);
    return schild;
}

}  // namespace

Leerbild::Leerbild(Form form, std::string symbol, QWidget* eltern)
    : QWidget(eltern),
      form_(form),
      symbol_(std::move(symbol)),
      titel_(mitte(KistePapier::tinte, this)),
      satz_(mitte(KistePapier::tinteLeise, this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* stapel = new QVBoxLayout(this);
    stapel->setContentsMargins(0, 0, 0, 0);
    stapel->setSpacing(0);
    stapel->addStretch();
    stapel->addSpacing(static_cast<int>(form == Form::kreis ? kKreis : kZeichen) + 12);
    stapel->addWidget(titel_);
    stapel->addSpacing(8);
    stapel->addWidget(satz_);
    stapel->addStretch();
    kleide();
}

void Leerbild::kleide() {
    titel_->setFont(Schrift::mach(18, QFont::Bold));
    satz_->setFont(Schrift::mach(12.5));
}

void Leerbild::zeige(const QString& titel, const QString& satz) {
    titel_->setText(titel);
    satz_->setText(satz);
}

double Leerbild::oben() const {
    return titel_->y() - 12 - (form_ == Form::kreis ? kKreis : kZeichen);
}

void Leerbild::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    const double seite = form_ == Form::kreis ? kKreis : kZeichen;
    const QRectF kasten((width() - seite) / 2, oben(), seite, seite);
    if (form_ == Form::zeichen) {
        Symbole::zeichne(maler, kasten, symbol_, KistePapier::gravur);
        return;
    }
    papier::form(maler, kasten, seite / 2, KistePapier::eierschale, KistePapier::mitDeckkraft(KistePapier::gold, 0.55));
    const double rand = (kKreis - kImKreis) / 2;
    Symbole::zeichne(maler, kasten.adjusted(rand, rand, -rand, -rand), symbol_, KistePapier::goldDunkel);
}

}  // namespace spurkiste
