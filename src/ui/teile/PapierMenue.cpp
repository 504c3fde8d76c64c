#include "ui/teile/PapierMenue.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

namespace {

// Logical pixels.
constexpr double kSchrift = 12.5;
constexpr int kRand = 10;  // of a row, left and right
constexpr int kZeilenradius = 7;
constexpr int kHaekchen = 16;
constexpr int kAbstand = 8;       // between check mark and text
constexpr int kVorDerTaste = 24;  // between text and key
constexpr int kUnterElement = 4;

/// What an item says; the toolkit would take a single ampersand for the mark of a key.
QString beschriftung(const QAction& zeile) {
    return zeile.text().replace(QStringLiteral("&&"), QStringLiteral("&"));
}

}  // namespace

PapierMenue::PapierMenue(int breite, QWidget* eltern)
    : QMenu(eltern), schwebekarte_(*this), satz_(Schrift::mach(kSchrift, QFont::Medium)) {
    // The measures only: what is seen is painted here, in exact sizes.
    setStyleSheet(
        QStringLiteral("QMenu{background:transparent;border:0;padding:5px}"
                       "QMenu::item{height:26px;min-width:0;padding:0}"
                       "QMenu::separator{height:1px;margin:5px 0}"));
    const int rand = schwebekarte_.rand();
    setContentsMargins(rand, rand, rand, rand);
    setMinimumWidth(breite + 2 * rand);
}

QAction* PapierMenue::fuegeHinzu(const QString& text) {
    QString sicher = text;
    const double platz = satz_.breite(text) + 2 * (kRand + Schwebekarte::kInnenrand) + kHaekchen + kAbstand;
    setMinimumWidth(std::max(minimumWidth(), static_cast<int>(std::ceil(platz)) + 2 * schwebekarte_.rand()));
    return addAction(sicher.replace(QLatin1Char('&'), QStringLiteral("&&")));
}

QAction* PapierMenue::fuegeWahlHinzu(const QString& text, bool gewaehlt) {
    QAction* wahl = fuegeHinzu(text);
    hatHaekchen_ = true;
    wahl->setCheckable(true);
    wahl->setChecked(gewaehlt);
    return wahl;
}

QAction* PapierMenue::fuegeLoeschenHinzu(const QString& text) {
    loeschen_ = fuegeHinzu(text);
    return loeschen_;
}

QAction* PapierMenue::fuegeMitZeichenHinzu(const QString& text, std::string_view symbol, bool gewaehlt) {
    QAction* wahl = fuegeHinzu(text);
    wahl->setCheckable(true);  // for a screen reader; the icon is what eyes see
    wahl->setChecked(gewaehlt);
    if (!symbol.empty()) {
        gezeichnet_ = wahl;
        symbol_ = symbol;
    }
    return wahl;
}

QAction* PapierMenue::fuegeBefehlHinzu(const QString& text, const QKeySequence& taste) {
    const QString name = taste.toString(QKeySequence::NativeText);
    QAction* befehl = fuegeHinzu(text);
    tasten_.insert(befehl, name);
    const double platz =
        satz_.breite(text) + kVorDerTaste + satz_.breite(name) + 2 * (kRand + Schwebekarte::kInnenrand);
    setMinimumWidth(std::max(minimumWidth(), static_cast<int>(std::ceil(platz)) + 2 * schwebekarte_.rand()));
    return befehl;
}

void PapierMenue::keyPressEvent(QKeyEvent* ereignis) {
    // The toolkit's menus know Home and End only when they scroll, and Space in some styles.
    const bool anfang = ereignis->key() == Qt::Key_Home;
    if ((anfang || ereignis->key() == Qt::Key_End) && !actions().isEmpty()) {
        setActiveAction(anfang ? actions().constFirst() : actions().constLast());
        return;
    }
    if (ereignis->key() == Qt::Key_Space && !tippsuche_.laeuft()) {
        QKeyEvent eingabe(QEvent::KeyPress, Qt::Key_Return, ereignis->modifiers());
        QMenu::keyPressEvent(&eingabe);
        return;
    }
    if (Tippsuche::istBuchstabe(ereignis->text(), ereignis->modifiers())) {
        gehePerBuchstabe(ereignis->text());
        return;
    }
    QMenu::keyPressEvent(ereignis);
}

void PapierMenue::gehePerBuchstabe(const QString& text) {
    const QList<QAction*> zeilen = actions();
    const auto name = [&](int stelle) { return beschriftung(*zeilen[stelle]); };
    const int hier = static_cast<int>(zeilen.indexOf(activeAction()));
    const int ziel = tippsuche_.tippe(text, static_cast<int>(zeilen.size()), hier, name);
    if (ziel >= 0) {
        setActiveAction(zeilen[ziel]);
    }
}

void PapierMenue::mousePressEvent(QMouseEvent* ereignis) {
    if (!schwebekarte_.schliessePerDruck(ereignis->position().toPoint())) {
        QMenu::mousePressEvent(ereignis);
    }
}

void PapierMenue::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    schwebekarte_.zeichne(maler);
    for (QAction* zeile : actions()) {
        maleZeile(maler, *zeile, actionGeometry(zeile));
    }
}

void PapierMenue::maleZeile(QPainter& maler, const QAction& zeile, const QRectF& kasten) {
    if (zeile.isSeparator()) {
        maler.fillRect(QRectF(kasten.left() + kRand, std::floor(kasten.center().y()), kasten.width() - 2 * kRand, 1),
                       KistePapier::mitDeckkraft(KistePapier::linie, 0.9));
        return;
    }
    if (&zeile == activeAction() && zeile.isEnabled()) {
        papier::form(maler, kasten, kZeilenradius, KistePapier::mitDeckkraft(KistePapier::gold, 0.17), Qt::transparent);
    }
    const auto zeichen = [&](double links, std::string_view symbol) {
        Symbole::zeichne(maler, QRectF(links, kasten.center().y() - kHaekchen / 2.0, kHaekchen, kHaekchen), symbol,
                         KistePapier::goldDunkel);
    };
    if (hatHaekchen_ && zeile.isChecked()) {
        zeichen(kasten.left() + kRand, "checkmark");
    }
    if (&zeile == gezeichnet_) {
        zeichen(kasten.right() - kRand - kHaekchen, symbol_);
    }
    if (const QString taste = tasten_.value(&zeile); !taste.isEmpty()) {
        maler.setPen(zeile.isEnabled() ? KistePapier::tinteLeise : KistePapier::gravur);
        satz_.zeichne(maler, kasten.adjusted(kRand, 0, -kRand, 0), Qt::AlignRight, taste);
    }
    maler.setPen(!zeile.isEnabled()    ? KistePapier::gravur
                 : &zeile == loeschen_ ? KistePapier::rot
                                       : KistePapier::tinte);
    const int vorn = kRand + (hatHaekchen_ ? kHaekchen + kAbstand : 0);
    satz_.zeichne(maler, kasten.adjusted(vorn, 0, -kRand, 0), Qt::AlignLeft, beschriftung(zeile));
}

void PapierMenue::oeffneUnter(const QWidget& element) {
    const int ring = papier::kRingRand;
    const QRect form = element.rect().adjusted(ring, ring, -ring, -ring);
    oeffneUnter({element.mapToGlobal(form.topLeft()), form.size()}, kUnterElement);
}

void PapierMenue::oeffneUnter(const QRect& anker, int abstand) {
    schwebekarte_.setzeAnker(anker, abstand);
    popup(anker.bottomLeft());
}

void PapierMenue::showEvent(QShowEvent* ereignis) {
    schwebekarte_.richteAus();  // the toolkit has placed the window, and knows nothing of its shadow
    QMenu::showEvent(ereignis);
}

void PapierMenue::resizeEvent(QResizeEvent* ereignis) {
    QMenu::resizeEvent(ereignis);
    schwebekarte_.schneide();
}

}  // namespace spurkiste
