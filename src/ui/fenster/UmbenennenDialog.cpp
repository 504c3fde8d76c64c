#include "ui/fenster/UmbenennenDialog.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schatten.h"
#include "ui/teile/Schild.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kBreite = 408;
constexpr int kOben = 150;
constexpr int kRand = 24;
constexpr int kRadius = 16;
constexpr int kAbstand = 16;
constexpr int kFeldHoehe = 32;
constexpr int kRing = papier::kRingRand;

/// The field for the name, with the ring of the keyboard focus around it.
class Namensfeld final : public QLineEdit {
  public:
    explicit Namensfeld(const QString& name) : QLineEdit(name) {
        setFrame(false);
        setPlaceholderText(QStringLiteral("Dateiname"));
        setAccessibleName(QStringLiteral("Dateiname"));
        setFont(Schrift::mach(13));
        setFixedHeight(kFeldHoehe + 2 * kRing);
        setTextMargins(kRing + 7, 0, kRing + 7, 0);
        faerbeText(*this, KistePapier::tinte);
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

Schild* zeile(const QString& text, const QFont& schrift, const QColor& farbe) {
    auto* schild = new Schild;
    schild->setText(text);
    schild->setFont(schrift);
    schild->setzeFarbe(farbe);
    return schild;
}

Knopf::Aussehen knopfform(const QColor& text, const QColor& grund, QFont::Weight staerke) {
    Knopf::Aussehen aussehen;
    aussehen.hoehe = kFeldHoehe;
    aussehen.radius = kFeldHoehe / 2.0;
    aussehen.rand = 16;
    aussehen.schriftgroesse = 12;
    aussehen.staerke = staerke;
    aussehen.textFarbe = text;
    aussehen.grund = grund;
    aussehen.rahmen = KistePapier::mitDeckkraft(KistePapier::linie, 0.72);
    aussehen.ueberfahren = KistePapier::mitDeckkraft(KistePapier::tinte, 0.04);
    aussehen.gedrueckt = KistePapier::mitDeckkraft(KistePapier::tinte, 0.08);
    return aussehen;
}

}  // namespace

UmbenennenDialog::UmbenennenDialog(const Eintrag& eintrag, std::function<void(const QString&)> aktion, QWidget* eltern)
    : QDialog(eltern),
      aktion_(std::move(aktion)),
      blatt_(new QWidget(this)),
      name_(new Namensfeld(alsText(eintrag->dateiName))),
      abbrechen_(new Knopf),
      umbenennen_(new Knopf) {
    setWindowFlags(Qt::Widget);  // the constructor would make a window of it whatever it is told
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Datei umbenennen"));
    setAccessibleName(windowTitle());
    ordneAn();
    const auto pruefe = [this] { umbenennen_->setEnabled(istBenannt()); };
    connect(name_, &QLineEdit::textChanged, this, pruefe);
    connect(name_, &QLineEdit::returnPressed, this, &UmbenennenDialog::bestaetige);
    connect(umbenennen_, &Knopf::clicked, this, &UmbenennenDialog::bestaetige);
    connect(abbrechen_, &Knopf::clicked, this, &QDialog::reject);
    pruefe();
    eltern->installEventFilter(this);
    setGeometry(eltern->rect());
    raise();
    show();
    name_->setFocus();
}

void UmbenennenDialog::ordneAn() {
    abbrechen_->setText(QStringLiteral("Abbrechen"));
    abbrechen_->setzeAussehen(
        knopfform(KistePapier::tinte, KistePapier::mitDeckkraft(KistePapier::kapsel, 0.72), QFont::DemiBold));
    umbenennen_->setText(QStringLiteral("Umbenennen"));
    umbenennen_->setzeAussehen(knopfform(Qt::white, KistePapier::goldDunkel, QFont::Bold));

    auto* ueberschrift = new QVBoxLayout;
    ueberschrift->setSpacing(5);
    ueberschrift->addWidget(
        zeile(QStringLiteral("KORVO GPX"), Schrift::mach(10.5, QFont::Bold, 2.8), KistePapier::goldDunkel));
    ueberschrift->addWidget(zeile(windowTitle(), Schrift::mach(22, QFont::Bold), KistePapier::tinte));
    auto* knoepfe = new QHBoxLayout;
    knoepfe->setSpacing(10 - 2 * kRing);
    knoepfe->addStretch(1);
    knoepfe->addWidget(abbrechen_);
    knoepfe->addWidget(umbenennen_);
    auto* stapel = new QVBoxLayout(blatt_);
    stapel->setContentsMargins(kRand - kRing, kRand, kRand - kRing, kRand - kRing);
    stapel->setSpacing(kAbstand - 2 * kRing);
    ueberschrift->setContentsMargins(kRing, 0, kRing, kRing);
    stapel->addLayout(ueberschrift);
    stapel->addWidget(name_);
    stapel->addLayout(knoepfe);
    auto* seite = new QVBoxLayout(this);
    seite->setContentsMargins(0, kOben, 0, 0);
    blatt_->setFixedWidth(kBreite);
    seite->addWidget(blatt_, 0, Qt::AlignHCenter | Qt::AlignTop);
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

bool UmbenennenDialog::eventFilter(QObject* quelle, QEvent* ereignis) {
    if (quelle == parent() && ereignis->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QDialog::eventFilter(quelle, ereignis);
}

bool UmbenennenDialog::focusNextPrevChild(bool weiter) {
    // Round and round inside the sheet: what lies below it cannot be used now.
    const std::array<QWidget*, 3> reihe{name_, abbrechen_, umbenennen_};
    const auto hier = std::find(reihe.begin(), reihe.end(), focusWidget());
    auto stelle = static_cast<std::size_t>(hier - reihe.begin()) % reihe.size();
    do {
        stelle = (stelle + (weiter ? 1 : reihe.size() - 1)) % reihe.size();
    } while (!reihe.at(stelle)->isEnabled());
    reihe.at(stelle)->setFocus(weiter ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void UmbenennenDialog::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.fillRect(rect(), KistePapier::mitDeckkraft(KistePapier::tinte, 0.16));
    Schatten{KistePapier::mitDeckkraft(Qt::black, 0.16), 15, 10}.zeichne(maler, blatt_->geometry(), kRadius);
    papier::form(maler, blatt_->geometry(), kRadius, KistePapier::buehne,
                 KistePapier::mitDeckkraft(KistePapier::linie, 0.78));
}

}  // namespace spurkiste
