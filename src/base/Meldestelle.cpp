#include "base/Meldestelle.h"

#include <algorithm>
#include <utility>

namespace spurkiste {

struct Abo::Liste {
    struct Platz {
        std::uint64_t nummer;
        std::shared_ptr<const std::function<void()>> beobachter;
    };

    std::vector<Platz> plaetze;
    std::uint64_t naechste = 1;
};

Abo::Abo(const std::shared_ptr<Liste>& liste, std::uint64_t nummer) : liste_(liste), nummer_(nummer) {}

Abo::Abo(Abo&& anderes) noexcept : liste_(std::move(anderes.liste_)), nummer_(std::exchange(anderes.nummer_, 0)) {}

Abo& Abo::operator=(Abo&& anderes) noexcept {
    if (this != &anderes) {
        beende();
        liste_ = std::move(anderes.liste_);
        nummer_ = std::exchange(anderes.nummer_, 0);
    }
    return *this;
}

Abo::~Abo() {
    beende();
}

void Abo::beende() {
    if (const auto liste = liste_.lock()) {
        const auto platz = std::find_if(liste->plaetze.begin(), liste->plaetze.end(),
                                        [this](const Liste::Platz& einer) { return einer.nummer == nummer_; });
        if (platz != liste->plaetze.end()) {
            const auto letzter =
                std::move(platz->beobachter);  // may own another Abo: dies when the list is whole again
            liste->plaetze.erase(platz);
        }
    }
    liste_.reset();
}

Meldestelle::Meldestelle() : liste_(std::make_shared<Abo::Liste>()) {}

Abo Meldestelle::beobachte(std::function<void()> beobachter) const {
    const std::uint64_t nummer = liste_->naechste++;
    liste_->plaetze.push_back({nummer, std::make_shared<const std::function<void()>>(std::move(beobachter))});
    return {liste_, nummer};
}

void Meldestelle::melde() const {
    const auto liste = liste_;             // an observer may destroy this object
    const auto zuBeginn = liste->plaetze;  // and may change the list
    for (const auto& platz : zuBeginn) {
        const bool nochDa = std::any_of(liste->plaetze.begin(), liste->plaetze.end(),
                                        [&](const auto& anderer) { return anderer.nummer == platz.nummer; });
        if (nochDa) {
            (*platz.beobachter)();
        }
    }
}

}  // namespace spurkiste
