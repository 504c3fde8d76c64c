#include "track/Skizze.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "base/Seiten.h"

namespace spurkiste {

namespace {

/// The same coordinate in ten-millionths; nothing when it has more decimals or is beyond their range. A negative zero
/// has no integer of its own.
std::optional<Skizze::Rund> runde(const Koordinate& punkt) {
    const auto runde = [](double grad, std::int32_t& ziel) {
        constexpr double weiteste = std::numeric_limits<std::int32_t>::max() / Skizze::Rund::kJeGrad;
        if (!(std::fabs(grad) <= weiteste)) {
            return false;
        }
        ziel = static_cast<std::int32_t>(grad * Skizze::Rund::kJeGrad + (grad < 0.0 ? -0.5 : 0.5));
        return std::bit_cast<std::uint64_t>(ziel / Skizze::Rund::kJeGrad) == std::bit_cast<std::uint64_t>(grad);
    };
    Skizze::Rund rund;
    return runde(punkt.breite, rund.breite) && runde(punkt.laenge, rund.laenge) ? std::optional(rund) : std::nullopt;
}

}  // namespace

void Skizze::Bau::leere() {
    runde_.clear();
    genaue_.clear();
    anfaenge_.clear();
}

void Skizze::Bau::beginneLinie() {
    anfaenge_.push_back(static_cast<std::uint32_t>(punkte()));
}

void Skizze::Bau::haengeAn(const Koordinate& punkt) {
    assert(!anfaenge_.empty());
    if (istRund()) {
        if (const auto rund = runde(punkt)) {
            runde_.push_back(*rund);
            return;
        }
        genaue_.reserve(runde_.capacity());
        std::ranges::transform(runde_, std::back_inserter(genaue_), &Rund::ort);
    }
    genaue_.push_back(punkt);
}

bool Skizze::Bau::gleicht(const Skizze& skizze) const {
    if (anfaenge_.size() != skizze.linien_ || punkte() != skizze.punkte_) {
        return false;
    }
    const Punkte punkte =
        istRund() ? Punkte(runde_.data(), runde_.size(), true) : Punkte(genaue_.data(), genaue_.size(), false);
    if (!std::ranges::equal(punkte, skizze.punkte())) {
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
    const std::size_t jePunkt = (istRund() ? sizeof(Rund) : sizeof(Koordinate)) / sizeof(Platz);
    const std::size_t anfaenge = (anfaenge_.size() - 1) * sizeof(std::uint32_t);
    return punkte() * jePunkt + (anfaenge + sizeof(Platz) - 1) / sizeof(Platz);
}

Skizze Skizze::Bau::fertig() && {
    return anfaenge_.empty() ? Skizze() : fertigAn([](std::size_t anzahl) {
        // NOLINTNEXTLINE(cppcoreguidelines-avoid-c-arrays, modernize-avoid-c-arrays): as many as it takes, in one piece
        auto platz = std::make_shared<Platz[]>(anzahl);
        Platz* const anfang = platz.get();
        return std::shared_ptr<Platz>(std::move(platz), anfang);
    }(plaetze()));
}

Skizze Skizze::Bau::fertigIn(Lager& lager) const {
    return anfaenge_.empty() ? Skizze() : fertigAn(lager.nimm(plaetze()));
}

Skizze Skizze::Bau::fertigAn(std::shared_ptr<Platz> platz) const {
    const auto lege = [](const auto* ab, std::size_t anzahl, Platz* nach) {
        const std::size_t bytes = anzahl * sizeof *ab;
        if (bytes > 0) {
            std::memcpy(nach, ab, bytes);
        }
        return nach + bytes / sizeof *nach;
    };
    Platz* const hinten =
        istRund() ? lege(runde_.data(), runde_.size(), platz.get()) : lege(genaue_.data(), genaue_.size(), platz.get());
    lege(anfaenge_.data() + 1, anfaenge_.size() - 1, hinten);
    Skizze ergebnis;
    ergebnis.platz_ = std::move(platz);
    ergebnis.punkte_ = static_cast<std::uint32_t>(punkte());
    ergebnis.linien_ = static_cast<std::uint32_t>(anfaenge_.size()) & (std::numeric_limits<std::uint32_t>::max() >> 1U);
    ergebnis.rund_ = istRund() ? 1U : 0U;
    return ergebnis;
}

std::size_t Skizze::anfang(std::size_t nummer) const {
    if (nummer == 0) {
        return 0;
    }
    std::uint32_t wert = 0;
    const auto* const bytes = static_cast<const std::byte*>(static_cast<const void*>(platz_.get())) +
                              punkte_ * (rund_ != 0 ? sizeof(Rund) : sizeof(Koordinate));
    std::memcpy(&wert, bytes + (nummer - 1) * sizeof wert, sizeof wert);
    return wert;
}

Skizze::Punkte Skizze::punkte() const {
    return {platz_.get(), punkte_, rund_ != 0};
}

Skizze::Punkte Skizze::linie(std::size_t nummer) const {
    assert(nummer < linien());
    const std::size_t von = anfang(nummer);
    const std::size_t bis = nummer + 1 < linien() ? anfang(nummer + 1) : punkte_;
    const std::size_t jePunkt = (rund_ != 0 ? sizeof(Rund) : sizeof(Koordinate)) / sizeof(Platz);
    return {platz_.get() + von * jePunkt, bis - von, rund_ != 0};
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

std::shared_ptr<Skizze::Platz> Skizze::Lager::nimm(std::size_t plaetze) {
    const std::size_t groesse = plaetze * sizeof(Platz);
    if (!aktuelles_ || aktuelles_->bytes().size() - belegt_ < groesse) {
        aktuelles_ = std::make_shared<Seiten>(std::max(stueck_, groesse));
        belegt_ = 0;
    }
    std::byte* const stelle = aktuelles_->bytes().data() + belegt_;
    belegt_ += groesse;
    return {aktuelles_, static_cast<Platz*>(static_cast<void*>(stelle))};
}

}  // namespace spurkiste
