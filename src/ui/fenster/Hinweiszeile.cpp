#include "ui/fenster/Hinweiszeile.h"

#include <QHBoxLayout>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

Hinweiszeile::Hinweiszeile(QWidget* eltern) : QWidget(eltern), text_(new Schild(this)) {
    text_->setzeFarbe(KistePapier::rot);
    text_->setzeKuerzung(Qt::ElideRight);
    auto* zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->addWidget(text_);
    hide();
}

void Hinweiszeile::zeige(const QString& hinweis, bool erneut) {
    if (text_->text() == hinweis && !erneut) {
        return;
    }
    hide();
    text_->setText(hinweis);
    setzeKurzhilfe(*text_, hinweis);
    setVisible(!hinweis.isEmpty());
}

}  // namespace spurkiste
