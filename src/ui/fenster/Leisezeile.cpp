#include "ui/fenster/Leisezeile.h"

#include <QHBoxLayout>
#include <chrono>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr std::chrono::seconds kDauer(7);  // to be noticed and read without haste

}  // namespace

Leisezeile::Leisezeile(QWidget* eltern) : QWidget(eltern), text_(new Schild(this)) {
    text_->setzeFarbe(KistePapier::tinteLeise);
    text_->setzeKuerzung(Qt::ElideRight);
    auto* zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->addWidget(text_);
    dauer_.setSingleShot(true);
    dauer_.setInterval(kDauer);
    connect(&dauer_, &QTimer::timeout, this, [this] { sage({}); });
    hide();
}

void Leisezeile::sage(const QString& text) {
    hide();
    text_->setText(text);
    setzeKurzhilfe(*text_, text);
    if (text.isEmpty()) {
        dauer_.stop();
    } else {
        show();
        dauer_.start();
    }
}

}  // namespace spurkiste
