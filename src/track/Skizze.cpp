#include "track/Skizze.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace spurkiste {

struct Skizze::Inhalt {
    std::vector<Koordinate> punkte;
    std::vector<std::uint32_t> anfaenge;  // index of each line's first point
};

Skizze::Skizze(std::shared_ptr<const Inhalt> inhalt) : inhalt_(std::move(inhalt)) {}

void Skizze::Bau::beginneLinie() {
    anfaenge_.push_back(static_cast<std::uint32_t>(punkte_.size()));
}

void Skizze::Bau::haengeAn(const Koordinate& punkt) {
    assert(!anfaenge_.empty());
    punkte_.push_back(punkt);
}

Skizze Skizze::Bau::fertig() && {
    if (anfaenge_.empty()) {
        return {};
    }
    // A library keeps one of these per record for the whole run: exactly the room it needs.
    punkte_.shrink_to_fit();
    anfaenge_.shrink_to_fit();
    return Skizze(std::make_shared<const Inhalt>(Inhalt{std::move(punkte_), std::move(anfaenge_)}));
}

std::size_t Skizze::linien() const {
    return inhalt_ ? inhalt_->anfaenge.size() : 0;
}

std::span<const Koordinate> Skizze::linie(std::size_t nummer) const {
    assert(nummer < linien());
    const std::size_t von = inhalt_->anfaenge[nummer];
    const std::size_t bis = nummer + 1 < linien() ? inhalt_->anfaenge[nummer + 1] : inhalt_->punkte.size();
    return std::span(inhalt_->punkte).subspan(von, bis - von);
}

std::span<const Koordinate> Skizze::punkte() const {
    return inhalt_ ? std::span<const Koordinate>(inhalt_->punkte) : std::span<const Koordinate>();
}

bool operator==(const Skizze& a, const Skizze& b) {
    if (a.inhalt_ == b.inhalt_) {
        return true;
    }
    return a.inhalt_ && b.inhalt_ && a.inhalt_->anfaenge == b.inhalt_->anfaenge &&
           a.inhalt_->punkte == b.inhalt_->punkte;
}

}  // namespace spurkiste
