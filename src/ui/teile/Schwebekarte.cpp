#include "ui/teile/Schwebekarte.h"

#include <QBitmap>
#include <QByteArray>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

#include <xcb/xcb.h>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schatten.h"

namespace spurkiste {

namespace {

constexpr int kSchattenrand = 44;  // beyond it nothing is seen of the shadow

struct Frei {
    void operator()(void* was) const { std::free(was); }  // NOLINT(cppcoreguidelines-no-malloc): XCB's own way
};
template <typename Antwort>
using Geliehen = std::unique_ptr<Antwort, Frei>;

}  // namespace

/// Under X11 that is the job of a program that may be missing; it
/// owns a selection whose name ends with the screen's number.
bool Schwebekarte::wirdGemischt() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // Other platforms may have this interface, too, and no connection behind it.
    if (x11 == nullptr || QGuiApplication::platformName() != QStringLiteral("xcb")) {
        return true;
    }
    xcb_connection_t* leitung = x11->connection();
    int nummer = 0;
    char* rechner = nullptr;
    int anzeige = 0;
    xcb_parse_display(nullptr, &rechner, &anzeige, &nummer);
    const Geliehen<char> wiederFrei(rechner);
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(nummer);
    const Geliehen<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        leitung, xcb_intern_atom(leitung, 0, static_cast<std::uint16_t>(name.size()), name.constData()), nullptr));
    if (!atom) {
        return false;
    }
    const Geliehen<xcb_get_selection_owner_reply_t> besitzer(
        xcb_get_selection_owner_reply(leitung, xcb_get_selection_owner(leitung, atom->atom), nullptr));
    return besitzer && besitzer->owner != XCB_NONE;
}

Schwebekarte::Schwebekarte(QWidget& fenster) : fenster_(fenster), rand_(wirdGemischt() ? kSchattenrand : 0) {
    fenster.setWindowFlag(Qt::NoDropShadowWindowHint);
    if (rand_ > 0) {
        fenster.setWindowFlag(Qt::FramelessWindowHint);
        fenster.setAttribute(Qt::WA_TranslucentBackground);
    }
}

void Schwebekarte::zeichne(QPainter& maler) const {
    const QRectF form = karte();
    if (rand_ > 0) {
        Schatten{KistePapier::mitDeckkraft(Qt::black, 0.16), 15, 10}.zeichne(maler, form, kRadius);
        Schatten{KistePapier::mitDeckkraft(Qt::black, 0.07), 3, 2}.zeichne(maler, form, kRadius);
        papier::form(maler, form, kRadius, KistePapier::karte, KistePapier::linie);
    } else {
        maler.fillRect(form, KistePapier::linie);  // what the mask leaves of the corners is border
        papier::form(maler, form.adjusted(1, 1, -1, -1), kRadius - 1, KistePapier::karte, Qt::transparent);
    }
}

void Schwebekarte::schneide() const {
    if (rand_ > 0) {
        return;
    }
    QBitmap form(fenster_.size());
    form.clear();
    QPainter maler(&form);
    maler.setPen(Qt::NoPen);
    maler.setBrush(Qt::color1);
    maler.drawRoundedRect(fenster_.rect(), kRadius, kRadius);
    maler.end();
    fenster_.setMask(form);
}

void Schwebekarte::setzeAnker(const QRect& anker, int abstand) {
    anker_ = anker;
    abstand_ = abstand;
}

int Schwebekarte::freieHoehe() const {
    const QScreen* schirm = QGuiApplication::screenAt(anker_.topLeft());
    if (schirm == nullptr) {
        return std::numeric_limits<int>::max();
    }
    const QRect frei = schirm->availableGeometry();
    const int darunter = frei.top() + frei.height() - (anker_.top() + anker_.height() + abstand_);
    return std::max(darunter, anker_.top() - abstand_ - frei.top());
}

void Schwebekarte::richteAus() const {
    const QSize groesse = karte().size();
    QPoint ort(anker_.left(), anker_.top() + anker_.height() + abstand_);
    const QScreen* schirm = QGuiApplication::screenAt(anker_.topLeft());
    if (schirm != nullptr) {
        const QRect frei = schirm->availableGeometry();
        const int rechts = frei.left() + frei.width() - groesse.width();
        const int unten = frei.top() + frei.height() - groesse.height();
        if (groesse.height() > freieHoehe()) {
            const int daneben = anker_.left() + anker_.width() + abstand_;
            ort.setX(daneben <= rechts ? daneben : anker_.left() - abstand_ - groesse.width());
        } else if (ort.y() > unten) {
            ort.setY(anker_.top() - abstand_ - groesse.height());
        }
        const auto hinein = [](int wert, int anfang, int ende) {
            return std::clamp(wert, anfang, std::max(anfang, ende));
        };
        ort = QPoint(hinein(ort.x(), frei.left(), rechts), hinein(ort.y(), frei.top(), unten));
    }
    fenster_.move(ort - QPoint(rand_, rand_));
}

bool Schwebekarte::schliessePerDruck(const QPoint& wo) const {
    if (karte().contains(wo)) {
        return false;
    }
    // Pressed again, the control that opened it closes it: the press must not open it once more.
    fenster_.setAttribute(Qt::WA_NoMouseReplay, anker_.contains(fenster_.mapToGlobal(wo)));
    fenster_.close();
    return true;
}

}  // namespace spurkiste
