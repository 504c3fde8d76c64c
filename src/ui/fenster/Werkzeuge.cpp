#include "ui/fenster/Werkzeuge.h"

#include <QHBoxLayout>
#include <QPainter>

#include "base/Dateien.h"
#include "i18n/AppSprache.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/PapierMenue.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kHoehe = 46;
constexpr int kRand = 18;
constexpr int kAbstand = 10;
constexpr int kMenuebreite = 196;
constexpr int kRing = papier::kRingRand;

QString text(std::string_view schluessel) {
    return QString::fromStdString(AppSprache::text(schluessel));
}

/// The hairline between title and folder.
class Strich final : public QWidget {
  public:
    explicit Strich(QWidget* eltern) : QWidget(eltern) { setFixedSize(1, 13); }

  protected:
    void paintEvent(QPaintEvent* /*ereignis*/) override { QPainter(this).fillRect(rect(), KistePapier::linie); }
};

Knopf::Aussehen aussehen() {
    Knopf::Aussehen a;
    a.textFarbe = KistePapier::tinte;
    a.symbolFarbe = KistePapier::goldDunkel;
    a.schlussFarbe = KistePapier::goldDunkel;
    a.schlussKasten = 12;
    a.schlussAbstand = 5;
    a.ueberfahren = KistePapier::mitDeckkraft(KistePapier::kapsel, 0.72);
    a.gedrueckt = KistePapier::mitDeckkraft(KistePapier::kapsel, 0.9);
    return a;
}

}  // namespace

Werkzeuge::Werkzeuge(const Einstellungen& einstellungen, QWidget* eltern)
    : QWidget(eltern),
      einstellungen_(einstellungen),
      titel_(new Schild(this)),
      ordner_(new Schild(this)),
      import_(new Knopf(this)),
      ordnerwechsel_(new Knopf(this)),
      neuladen_(new Knopf(this)),
      sprache_(new Knopf(this)),
      suchfeld_(new Suchfeld(this)) {
    setFixedHeight(kHoehe);
    setAccessibleName(QStringLiteral("Werkzeuge"));
    titel_->setText(QStringLiteral("Korvo GPX Library"));
    titel_->setzeFarbe(KistePapier::tinte);
    ordner_->setzeFarbe(KistePapier::tinteLeise);
    ordner_->setzeKuerzung(Qt::ElideRight);
    import_->setzeSymbole("plus");
    ordnerwechsel_->setzeSymbole("folder");
    neuladen_->setzeSymbole("arrow.clockwise");
    sprache_->setzeSymbole("globe", "chevron.down");
    sprache_->setzeAufklappend();
    import_->setToolTip(QStringLiteral("GPX-Dateien in die Bibliothek kopieren"));
    neuladen_->setToolTip(QStringLiteral("Ordner neu einlesen"));
    connect(import_, &Knopf::clicked, this, &Werkzeuge::importGewuenscht);
    connect(ordnerwechsel_, &Knopf::clicked, this, &Werkzeuge::ordnerwechselGewuenscht);
    connect(neuladen_, &Knopf::clicked, this, &Werkzeuge::neuladenGewuenscht);
    connect(sprache_, &Knopf::clicked, this, &Werkzeuge::oeffneSprachmenue);

    auto* zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(kRand, 0, kRand - kRing, 0);
    zeile->setSpacing(0);
    zeile->addWidget(titel_);
    zeile->addSpacing(kAbstand);
    zeile->addWidget(new Strich(this));
    zeile->addSpacing(kAbstand);
    zeile->addWidget(ordner_, 1);
    for (Knopf* knopf : {import_, ordnerwechsel_, neuladen_, sprache_}) {
        zeile->addSpacing(2 - 2 * kRing);
        zeile->addWidget(knopf);
    }
    constexpr int bisZumSuchfeld = 11;
    zeile->addSpacing(bisZumSuchfeld - 2 * kRing);
    zeile->addWidget(suchfeld_);
    kleide();
}

void Werkzeuge::kleide() {
    titel_->setFont(Schrift::mach(13, QFont::Bold));
    ordner_->setFont(Schrift::mach(12, QFont::Medium));
    import_->setText(text("import"));
    ordnerwechsel_->setText(text("folder"));
    neuladen_->setText(text("reload"));
    sprache_->setText(text("language"));
    for (Knopf* knopf : {import_, ordnerwechsel_, neuladen_, sprache_}) {
        knopf->setzeAussehen(aussehen());
    }
}

void Werkzeuge::zeigeOrdner(const std::string& pfad) {
    ordner_->setText(alsText(dateien::letzterTeil(pfad)));
    setzeKurzhilfe(*ordnerwechsel_, QStringLiteral("Bibliotheksordner wechseln (aktuell: %1)").arg(alsText(pfad)));
}

void Werkzeuge::richteSpalteAus(int breite) {
    suchfeld_->setFixedWidth(std::max(0, breite - 2 * kRand) + 2 * kRing);
}

void Werkzeuge::oeffneSprachmenue() {
    auto* menue = new PapierMenue(kMenuebreite, this);
    menue->setAttribute(Qt::WA_DeleteOnClose);
    menue->setAccessibleName(sprache_->text());
    const QString gespeichert = QString::fromStdString(einstellungen_.lies(einstellung::kAppLanguage).value_or(""));
    const QString gewaehlt = gespeichert.isEmpty() ? QStringLiteral("system") : gespeichert;
    const auto wahl = [&](const QString& name, const QString& code) {
        connect(menue->fuegeWahlHinzu(name, code == gewaehlt), &QAction::triggered, this,
                [this, code] { Q_EMIT spracheGewaehlt(code); });
    };
    wahl(text("system"), QStringLiteral("system"));
    menue->addSeparator();
    for (const auto& sprache : AppSprache::sprachen()) {
        wahl(QString::fromStdString(sprache.name), QString::fromStdString(sprache.id));
    }
    menue->addSeparator();
    connect(menue->fuegeHinzu(QStringLiteral("Tastenkürzel")), &QAction::triggered, this, &Werkzeuge::tastenGewuenscht);
    connect(menue->fuegeHinzu(QStringLiteral("Über Spurkiste")), &QAction::triggered, this,
            &Werkzeuge::ueberGewuenscht);
    menue->oeffneUnter(*sprache_);
    sprache_->zeigeOffen(*menue);
}

void Werkzeuge::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.fillRect(rect(), KistePapier::buehne);
    maler.fillRect(QRect(0, height() - 1, width(), 1), KistePapier::mitDeckkraft(KistePapier::linie, 0.6));
}

}  // namespace spurkiste
