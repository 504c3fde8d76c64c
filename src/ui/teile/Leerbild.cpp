#include "ui/teile/Leerbild.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <cmath>
#include <optional>
#include <utility>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Schriftsatz.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

namespace {

constexpr double kZeichen = 52;
constexpr double kKreis = 72;
constexpr double kImKreis = 36;
constexpr int kAbstand = 12;

constexpr double kTitelgroesse = 18;
constexpr double kSatzgroesse = 12.5;

double seiteVon(Leerbild::Form form) {
    return form == Leerbild::Form::kreis ? kKreis : kZeichen;
}

}  // namespace

/// Centred lines in an exact size, which a screen reader takes for any other label.
class Leerbild::Zeilen final : public QLabel {
  public:
    Zeilen(double groesse, double zeilenhoehe, const QColor& farbe, QWidget* eltern)
        : QLabel(eltern), groesse_(groesse), zeilenhoehe_(zeilenhoehe), farbe_(farbe) {
        setTextFormat(Qt::PlainText);
    }

    void kleide(QFont::Weight staerke) {
        setFont(Schrift::mach(groesse_, staerke));
        satz_.emplace(font(), groesse_);
        updateGeometry();
    }

    [[nodiscard]] QSize sizeHint() const override {
        return {0, static_cast<int>(std::lround(zeilenhoehe_ * static_cast<double>(text().count(u'\n') + 1)))};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* /*ereignis*/) override {
        QPainter maler(this);
        maler.setPen(farbe_);
        QRectF zeile(0, 0, width(), zeilenhoehe_);
        for (const QString& stueck : text().split(u'\n')) {
            satz_->zeichne(maler, zeile, Qt::AlignHCenter, stueck);
            zeile.translate(0, zeilenhoehe_);
        }
    }

  private:
    double groesse_;
    double zeilenhoehe_;
    QColor farbe_;
    std::optional<Schriftsatz> satz_;
};

Leerbild::Leerbild(Form form, std::string symbol, QWidget* eltern)
    : QWidget(eltern),
      form_(form),
      symbol_(std::move(symbol)),
      titel_(new Zeilen(kTitelgroesse, 21.6, KistePapier::tinte, this)),
      satz_(new Zeilen(kSatzgroesse, 17, KistePapier::tinteLeise, this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* stapel = new QVBoxLayout(this);
    stapel->setContentsMargins(0, form == Form::kreis ? 0 : 2, 0, 0);
    stapel->setSpacing(0);
    stapel->addStretch();
    stapel->addSpacing(static_cast<int>(seiteVon(form)) + kAbstand);
    stapel->addWidget(titel_);
    stapel->addSpacing(form == Form::kreis ? 8 : 7);  // in whole pixels, of lines that are not
    stapel->addWidget(satz_);
    stapel->addStretch();
    kleide();
}

void Leerbild::kleide() {
    titel_->kleide(QFont::Bold);
    satz_->kleide(QFont::Normal);
}

void Leerbild::zeige(const QString& titel, const QString& satz) {
    titel_->setText(titel);
    satz_->setText(satz);
}

void Leerbild::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    const double seite = seiteVon(form_);
    const QRectF kasten((width() - seite) / 2, titel_->y() - kAbstand - seite, seite, seite);
    if (form_ == Form::zeichen) {
        Symbole::zeichne(maler, kasten, symbol_, KistePapier::gravur);
        return;
    }
    papier::form(maler, kasten, seite / 2, KistePapier::eierschale, KistePapier::mitDeckkraft(KistePapier::gold, 0.55));
    const double rand = (kKreis - kImKreis) / 2;
    Symbole::zeichne(maler, kasten.adjusted(rand, rand, -rand, -rand), symbol_, KistePapier::goldDunkel);
}

}  // namespace spurkiste
