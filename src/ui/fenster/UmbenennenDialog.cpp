#include "ui/fenster/UmbenennenDialog.h"

#include <QPainter>
#include <utility>

#include "base/Text.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Textmenue.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kRing = papier::kRingRand;

/// The field for the name, with the ring of the keyboard focus around it.
class Namensfeld final : public QLineEdit {
  public:
    Namensfeld(const QString& name, int hoehe) : QLineEdit(name) {
        setFrame(false);
        setPlaceholderText(QStringLiteral("Dateiname"));
        setAccessibleName(QStringLiteral("Dateiname"));
        setFont(Schrift::mach(13));
        setFixedHeight(hoehe + 2 * kRing);
        setTextMargins(kRing + 7, 0, kRing + 7, 0);
        faerbeText(*this, KistePapier::tinte);
        textmenue::kleide(*this);
        selectAll();
    }

  protected:
    void paintEvent(QPaintEvent* ereignis) override {
        {
            constexpr double radius = 8;
            QPainter maler(this);
            const QRectF kasten = papier::ohneRing(*this);
            papier::form(maler, kasten, radius, KistePapier::karte, KistePapier::linie);
            if (hasFocus()) {
                papier::fokusring(maler, kasten, radius);
            }
        }
        QLineEdit::paintEvent(ereignis);
    }
};

}  // namespace

UmbenennenDialog::UmbenennenDialog(const Eintrag& eintrag, std::function<void(const QString&)> aktion, QWidget* eltern)
    : Blatt(QStringLiteral("Datei umbenennen"), eltern),
      aktion_(std::move(aktion)),
      name_(new Namensfeld(alsText(eintrag->dateiName), kFeldHoehe)),
      umbenennen_(wichtigerKnopf(QStringLiteral("Umbenennen"))) {
    umbenennen_->setzeVorgabe();
    Knopf* abbrechen = leiserKnopf(QStringLiteral("Abbrechen"));
    const auto pruefe = [this] { umbenennen_->setEnabled(istBenannt()); };
    connect(name_, &QLineEdit::textChanged, this, pruefe);
    connect(name_, &QLineEdit::returnPressed, this, &UmbenennenDialog::bestaetige);
    connect(umbenennen_, &Knopf::clicked, this, &UmbenennenDialog::bestaetige);
    connect(abbrechen, &Knopf::clicked, this, &QDialog::reject);
    pruefe();
    legeAus({name_}, {abbrechen, umbenennen_});
    zeigeMit(name_);
}

bool UmbenennenDialog::istBenannt() const {
    return !text::trimme(name_->text().toStdString()).empty();
}

void UmbenennenDialog::bestaetige() {
    if (istBenannt()) {
        const auto aktion = std::move(aktion_);
        const QString name = name_->text();
        accept();
        aktion(name);
    }
}

}  // namespace spurkiste
