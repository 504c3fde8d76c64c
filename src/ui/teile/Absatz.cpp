#include "ui/teile/Absatz.h"

#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
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

#include "ui/teile/Schrift.h"
#include "ui/teile/Schriftsatz.h"
#include "ui/teile/Textmenue.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

// The toolkit rounds the sizes of fonts to whole pixels. So the document is twice as large as what is seen of it.
constexpr int kVergroesserung = 2;

}  // namespace

Absatz::Absatz(const QColor& farbe, bool waehlbar, QWidget* eltern, const Zeilenmass& mass)
    : QTextEdit(eltern), mass_(mass) {
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
    setLineWrapMode(QTextEdit::FixedPixelWidth);
    connect(this, &QTextEdit::selectionChanged, viewport(), qOverload<>(&QWidget::update));
    connect(this, &QTextEdit::cursorPositionChanged, viewport(), qOverload<>(&QWidget::update));
    faerbeText(*this, farbe);
    if (waehlbar) {
        textmenue::kleide(*this);
    }
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
    document()->setDefaultFont(Schriftsatz::doppelt(font(), Schrift::groesse(font())));
    const int hoehe = kVergroesserung * mass_.hoehe;
    QTextBlockFormat form;
    form.setLineHeight(hoehe, QTextBlockFormat::FixedHeight);
    form.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);  // as all other texts, from wherever they are read
    QTextCursor alles(document());
    alles.select(QTextCursor::Document);
    alles.mergeBlockFormat(form);

    QTextLayout probe(document()->firstBlock().text(), document()->defaultFont());
    probe.beginLayout();
    const QTextLine zeile = probe.createLine();
    probe.endLayout();
    const double durchschuss = zeile.isValid() ? std::max(0.0, zeile.leading()) : 0.0;
    QTextFrameFormat rahmen = document()->rootFrame()->frameFormat();
    rahmen.setTopMargin(std::max(0.0, kVergroesserung * mass_.grundlinie - (0.8 * hoehe - durchschuss)));
    document()->rootFrame()->setFrameFormat(rahmen);
    updateGeometry();
}

void Absatz::changeEvent(QEvent* ereignis) {
    QTextEdit::changeEvent(ereignis);
    if (ereignis->type() == QEvent::FontChange) {
        richteAus();
    }
}

void Absatz::resizeEvent(QResizeEvent* ereignis) {
    setLineWrapColumnOrWidth(kVergroesserung * viewport()->width());
    QTextEdit::resizeEvent(ereignis);
}

void Absatz::paintEvent(QPaintEvent* /*ereignis*/) {
    QAbstractTextDocumentLayout::PaintContext wie;
    wie.palette = palette();
    if (textCursor().hasSelection()) {
        QTextCharFormat markiert;
        markiert.setBackground(palette().brush(QPalette::Highlight));
        markiert.setForeground(palette().brush(QPalette::HighlightedText));
        wie.selections.push_back({textCursor(), markiert});
    }
    QPainter maler(viewport());
    maler.scale(1.0 / kVergroesserung, 1.0 / kVergroesserung);
    document()->documentLayout()->draw(&maler, wie);
}

/// The mouse is where it would be on the larger document.
bool Absatz::viewportEvent(QEvent* ereignis) {
    switch (ereignis->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove: {
            const auto& maus = static_cast<const QMouseEvent&>(*ereignis);
            QMouseEvent gross(maus.type(), maus.position() * kVergroesserung, maus.scenePosition(),
                              maus.globalPosition(), maus.button(), maus.buttons(), maus.modifiers());
            gross.setAccepted(maus.isAccepted());
            const bool verarbeitet = QTextEdit::viewportEvent(&gross);
            ereignis->setAccepted(gross.isAccepted());
            return verarbeitet;
        }
        default:
            return QTextEdit::viewportEvent(ereignis);
    }
}

int Absatz::heightForWidth(int breite) const {
    int zeilen = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextLayout umbruch(block.text(), document()->defaultFont());
        QTextOption wie;
        wie.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        umbruch.setTextOption(wie);
        umbruch.beginLayout();
        for (QTextLine zeile = umbruch.createLine(); zeile.isValid(); zeile = umbruch.createLine()) {
            zeile.setLineWidth(kVergroesserung * breite);
            ++zeilen;
        }
        umbruch.endLayout();
    }
    return mass_.hoehe * std::max(1, zeilen);
}

QSize Absatz::sizeHint() const {
    return {0, heightForWidth(std::max(1, width()))};
}

void Absatz::wheelEvent(QWheelEvent* ereignis) {
    ereignis->ignore();  // there is nothing to scroll here, but around it
}

}  // namespace spurkiste
