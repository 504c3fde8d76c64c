#include "ui/teile/Absatz.h"

#include <QAccessible>
#include <QEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextFrameFormat>
#include <QTextLayout>
#include <QWheelEvent>
#include <algorithm>

#include "ui/teile/Textzeile.h"

namespace spurkiste {

Absatz::Absatz(const QColor& farbe, bool waehlbar, QWidget* eltern) : QTextEdit(eltern) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setUndoRedoEnabled(false);
    setReadOnly(true);
    setTextInteractionFlags(waehlbar ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                     : Qt::NoTextInteraction);
    setFocusPolicy(waehlbar ? Qt::ClickFocus : Qt::NoFocus);
    setTabChangesFocus(true);
    setAcceptDrops(false);  // files are dropped on the window
    viewport()->setAutoFillBackground(false);
    viewport()->setCursor(waehlbar ? Qt::IBeamCursor : Qt::ArrowCursor);
    document()->setDocumentMargin(0);
    // What hangs out below the last line is empty: no reason to scroll.
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { verticalScrollBar()->setRange(0, 0); });
    faerbeText(*this, farbe);
    QSizePolicy regel(QSizePolicy::Preferred, QSizePolicy::Fixed);
    regel.setHeightForWidth(true);
    setSizePolicy(regel);
}

void Absatz::zeige(const QString& text) {
    if (text == toPlainText()) {
        return;  // what is marked stays marked
    }
    setPlainText(text);
    QAccessibleEvent neuerName(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&neuerName);
    richteAus();
}

/// In a line of fixed height the toolkit puts the baseline at four fifths, less the leading of its fonts; so the first
/// line is moved to its place.
void Absatz::richteAus() {
    QTextBlockFormat form;
    form.setLineHeight(kZeile, QTextBlockFormat::FixedHeight);
    QTextCursor alles(document());
    alles.select(QTextCursor::Document);
    alles.mergeBlockFormat(form);

    QTextLayout probe(document()->firstBlock().text(), font());
    probe.beginLayout();
    const QTextLine zeile = probe.createLine();
    probe.endLayout();
    const double durchschuss = zeile.isValid() ? std::max(0.0, zeile.leading()) : 0.0;
    QTextFrameFormat rahmen = document()->rootFrame()->frameFormat();
    rahmen.setTopMargin(std::max(0.0, kGrundlinie - (0.8 * kZeile - durchschuss)));
    document()->rootFrame()->setFrameFormat(rahmen);
    updateGeometry();
}

void Absatz::changeEvent(QEvent* ereignis) {
    QTextEdit::changeEvent(ereignis);
    if (ereignis->type() == QEvent::FontChange) {
        richteAus();
    }
}

int Absatz::heightForWidth(int breite) const {
    int zeilen = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextLayout umbruch(block.text(), font());
        QTextOption wie;
        wie.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        umbruch.setTextOption(wie);
        umbruch.beginLayout();
        for (QTextLine zeile = umbruch.createLine(); zeile.isValid(); zeile = umbruch.createLine()) {
            zeile.setLineWidth(breite);
            ++zeilen;
        }
        umbruch.endLayout();
    }
    return kZeile * std::max(1, zeilen);
}

QSize Absatz::sizeHint() const {
    return {0, heightForWidth(std::max(1, width()))};
}

void Absatz::wheelEvent(QWheelEvent* ereignis) {
    ereignis->ignore();  // there is nothing to scroll here, but around it
}

}  // namespace spurkiste
