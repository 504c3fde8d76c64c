#include "ui/teile/Textzeile.h"

#include <QTextLayout>
#include <QToolTip>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Textmenue.h"

namespace spurkiste {

QString alsText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void faerbeText(QWidget& element, const QColor& farbe) {
    QPalette palette = element.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::WindowText, farbe);
    palette.setColor(QPalette::Text, farbe);
    palette.setColor(QPalette::Highlight, KistePapier::mitDeckkraft(KistePapier::gold, 0.28));
    palette.setColor(QPalette::HighlightedText, KistePapier::tinte);
    element.setPalette(palette);
}

QStringList umbrochen(const QString& text, const QFont& schrift, int breite) {
    QTextLayout satz(text, schrift);
    QTextOption wie;
    wie.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    satz.setTextOption(wie);
    QStringList zeilen;
    satz.beginLayout();
    for (QTextLine zeile = satz.createLine(); zeile.isValid(); zeile = satz.createLine()) {
        zeile.setLineWidth(breite);
        zeilen << text.mid(zeile.textStart(), zeile.textLength());
    }
    satz.endLayout();
    return zeilen;
}

QString alsKurzhilfe(const QString& text) {
    constexpr int hoechstbreite = 420;
    QStringList zeilen = umbrochen(text, QToolTip::font(), hoechstbreite);
    for (QString& zeile : zeilen) {
        zeile = zeile.toHtmlEscaped();
    }
    return QStringLiteral("<div style=\"white-space:pre\">") + zeilen.join(QStringLiteral("<br>")) +
           QStringLiteral("</div>");
}

void setzeKurzhilfe(QWidget& element, const QString& text) {
    element.setToolTip(text.isEmpty() ? text : alsKurzhilfe(text));
    if (element.accessibleDescription() != text) {  // else a screen reader is told of each refresh
        element.setAccessibleDescription(text);
    }
}

QLabel* neueTextzeile(const QColor& farbe, QWidget* eltern) {
    auto* zeile = new QLabel(eltern);
    zeile->setTextFormat(Qt::PlainText);
    faerbeText(*zeile, farbe);
    zeile->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    textmenue::kleide(*zeile);
    return zeile;
}

}  // namespace spurkiste
