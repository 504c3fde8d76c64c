#include "track/Skizze.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

#include "base/Seiten.h"

namespace spurkiste {

void Skizze::Bau::leere() {
    punkte_.clear();
    anfaenge_.clear();
}

void Skizze::Bau::beginneLinie() {
    anfaenge_.push_back(static_cast<std::uint32_t>(punkte_.size()));
}

bool Skizze::Bau::gleicht(const Skizze& skizze) const {
    if (anfaenge_.size() != skizze.linien_ || !std::ranges::equal(punkte_, skizze.punkte())) {
        return false;
    }
    for (std::size_t i = 0; i < anfaenge_.size(); ++i) {
        if (anfaenge_[i] != skizze.anfang(i)) {
            return false;
        }
    }
    return true;
}

std::size_t Skizze::Bau::plaetze() const {
    const std::size_t anfaenge = (anfaenge_.size() - 1) * sizeof(std::uint32_t);
    return punkte_.size() + (anfaenge + sizeof(Koordinate) - 1) / sizeof(Koordinate);
}

Skizze Skizze::Bau::fertig() && {
    return anfaenge_.empty() ? Skizze() : fertigAn([](std::size_t anzahl) {
        // NOLINTNEXTLINE(cppcoreguidelines-avoid-c-arrays, modernize-avoid-c-arrays): as many as it takes, in one piece
        auto platz = std::make_shared<Koordinate[]>(anzahl);
        Koordinate* const anfang = platz.get();
        return std::shared_ptr<Koordinate>(std::move(platz), anfang);
    }(plaetze()));
}

Skizze Skizze::Bau::fertigIn(Lager& lager) const {
    return anfaenge_.empty() ? Skizze() : fertigAn(lager.nimm(plaetze()));
}

Skizze Skizze::Bau::fertigAn(std::shared_ptr<Koordinate> platz) const {
    Koordinate* const hinten = std::copy(punkte_.begin(), punkte_.end(), platz.get());
    if (anfaenge_.size() > 1) {
        std::memcpy(static_cast<void*>(hinten), anfaenge_.data() + 1, (anfaenge_.size() - 1) * sizeof(std::uint32_t));
    }
    Skizze ergebnis;
    ergebnis.platz_ = std::move(platz);
    ergebnis.punkte_ = static_cast<std::uint32_t>(punkte_.size());
    ergebnis.linien_ = static_cast<std::uint32_t>(anfaenge_.size());
    return ergebnis;
}

std::size_t Skizze::anfang(std::size_t nummer) const {
    if (nummer == 0) {
        return 0;
    }
    std::uint32_t wert = 0;
    const auto* const bytes = static_cast<const char*>(static_cast<const void*>(platz_.get() + punkte_));
    std::memcpy(&wert, bytes + (nummer - 1) * sizeof wert, sizeof wert);
    return wert;
}

std::span<const Koordinate> Skizze::linie(std::size_t nummer) const {
    assert(nummer < linien());
    const std::size_t von = anfang(nummer);
    const std::size_t bis = nummer + 1 < linien() ? anfang(nummer + 1) : punkte_;
    return punkte().subspan(von, bis - von);
}

bool operator==(const Skizze& a, const Skizze& b) {
    if (a.linien_ != b.linien_ || a.punkte_ != b.punkte_) {
        return false;
    }
    if (a.platz_ == b.platz_) {
        return true;
    }
    for (std::size_t i = 1; i < a.linien_; ++i) {
        if (a.anfang(i) != b.anfang(i)) {
            return false;
        }
    }
    return std::ranges::equal(a.punkte(), b.punkte());
}

std::shared_ptr<Koordinate> Skizze::Lager::nimm(std::size_t plaetze) {
    const std::size_t groesse = plaetze * sizeof(Koordinate);
    if (!aktuelles_ || aktuelles_->bytes().size() - belegt_ < groesse) {
        aktuelles_ = std::make_shared<Seiten>(std::max(stueck_, groesse));
        belegt_ = 0;
    }
    std::byte* const stelle = aktuelles_->bytes().data() + belegt_;
    belegt_ += groesse;
    return {aktuelles_, static_cast<Koordinate*>(static_cast<void*>(stelle))};
}

}  // namespace spurkiste
