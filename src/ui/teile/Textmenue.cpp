#include "ui/teile/Textmenue.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMimeData>
#include <QTextDocument>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "i18n/AppSprache.h"
#include "i18n/Textbefehle.h"
#include "ui/teile/PapierMenue.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste::textmenue {

namespace {

/// One command of a menu, or the line between two groups of them.
struct Zeile {
    Textbefehl befehl;
    QKeySequence::StandardKey taste;
    bool moeglich;
    std::function<void()> tue;  ///< none: a line
};

const Zeile kStrich{{}, {}, false, {}};

bool hatText(const QClipboard& ablage) {
    return ablage.mimeData() != nullptr && ablage.mimeData()->hasText();
}

std::vector<Zeile> zeilenFuer(QLineEdit& feld) {
    const bool schreibbar = !feld.isReadOnly();
    const bool markiert = feld.hasSelectedText();
    return {
        {Textbefehl::rueckgaengig, QKeySequence::Undo, feld.isUndoAvailable(), [&] { feld.undo(); }},
        {Textbefehl::wiederholen, QKeySequence::Redo, feld.isRedoAvailable(), [&] { feld.redo(); }},
        kStrich,
        {Textbefehl::ausschneiden, QKeySequence::Cut, schreibbar && markiert, [&] { feld.cut(); }},
        {Textbefehl::kopieren, QKeySequence::Copy, markiert, [&] { feld.copy(); }},
        {Textbefehl::einfuegen, QKeySequence::Paste, schreibbar && hatText(*QGuiApplication::clipboard()),
         [&] { feld.paste(); }},
        {Textbefehl::loeschen, QKeySequence::UnknownKey, schreibbar && markiert, [&] { feld.del(); }},
        kStrich,
        {Textbefehl::allesAuswaehlen, QKeySequence::SelectAll, feld.selectedText() != feld.text(),
         [&] { feld.selectAll(); }},
    };
}

std::vector<Zeile> zeilenFuer(QTextEdit& text) {
    return {
        {Textbefehl::kopieren, QKeySequence::Copy, text.textCursor().hasSelection(), [&] { text.copy(); }},
        kStrich,
        {Textbefehl::allesAuswaehlen, QKeySequence::SelectAll, !text.document()->isEmpty(), [&] { text.selectAll(); }},
    };
}

std::vector<Zeile> zeilenFuer(QLabel& schild) {
    return {
        {Textbefehl::kopieren, QKeySequence::Copy, schild.hasSelectedText(),
         [&] { QGuiApplication::clipboard()->setText(schild.selectedText()); }},
        kStrich,
        {Textbefehl::allesAuswaehlen, QKeySequence::SelectAll, !schild.text().isEmpty(),
         [&] { schild.setSelection(0, static_cast<int>(schild.text().size())); }},
    };
}

void oeffne(QWidget& ueber, const std::vector<Zeile>& zeilen, const QPoint& wo) {
    constexpr int breite = 196;
    const std::string sprache = AppSprache::code();
    auto* menue = new PapierMenue(breite, &ueber);
    menue->setAttribute(Qt::WA_DeleteOnClose);
    menue->setAccessibleName(QStringLiteral("Aktionen"));
    for (const Zeile& zeile : zeilen) {
        if (!zeile.tue) {
            menue->addSeparator();
            continue;
        }
        QAction* wahl = menue->fuegeBefehlHinzu(alsText(textbefehl(zeile.befehl, sprache)), QKeySequence(zeile.taste));
        wahl->setEnabled(zeile.moeglich);
        QObject::connect(wahl, &QAction::triggered, &ueber, zeile.tue);
    }
    menue->oeffneUnter(QRect(wo, QSize(0, 0)), 0);
}

/// Shift+F10, where no window has taken it: in sheets and choosers.
bool istMenuetaste(const QEvent& ereignis) {
    return ereignis.type() == QEvent::KeyPress &&
           static_cast<const QKeyEvent&>(ereignis).keyCombination() == (Qt::SHIFT | Qt::Key_F10);
}

/// Takes the wish for a menu before the widget sees it.
class Waechter final : public QObject {
  public:
    Waechter(QWidget& ueber, std::function<std::vector<Zeile>()> zeilen)
        : QObject(&ueber), ueber_(ueber), zeilen_(std::move(zeilen)) {}

  protected:
    bool eventFilter(QObject* quelle, QEvent* ereignis) override {
        if (ereignis->type() == QEvent::ContextMenu) {
            oeffne(ueber_, zeilen_(), static_cast<const QContextMenuEvent*>(ereignis)->globalPos());
        } else if (istMenuetaste(*ereignis)) {
            const QRect marke = ueber_.inputMethodQuery(Qt::ImCursorRectangle).toRect();
            oeffne(ueber_, zeilen_(), ueber_.mapToGlobal(marke.center()));
        } else if (ereignis->type() == QEvent::ShortcutOverride && istMoeglich(static_cast<QKeyEvent&>(*ereignis))) {
            ereignis->accept();
        } else {
            return QObject::eventFilter(quelle, ereignis);
        }
        return true;
    }

  private:
    /// A command that can be given comes before a shortcut of the window; the toolkit sees to that in fields only.
    [[nodiscard]] bool istMoeglich(QKeyEvent& taste) const {
        const auto zeilen = zeilen_();
        return std::any_of(zeilen.begin(), zeilen.end(),
                           [&](const Zeile& zeile) { return zeile.moeglich && taste.matches(zeile.taste); });
    }

    QWidget& ueber_;
    std::function<std::vector<Zeile>()> zeilen_;
};

}  // namespace

void kleide(QLineEdit& feld) {
    feld.installEventFilter(new Waechter(feld, [&] { return zeilenFuer(feld); }));
}

void kleide(QTextEdit& text) {
    auto* waechter = new Waechter(text, [&] { return zeilenFuer(text); });
    text.installEventFilter(waechter);
    text.viewport()->installEventFilter(waechter);
}

void kleide(QLabel& schild) {
    schild.installEventFilter(new Waechter(schild, [&] { return zeilenFuer(schild); }));
}

}  // namespace spurkiste::textmenue
