#include "base/AufgabenSchlange.h"

#include <utility>

namespace spurkiste {

void AufgabenSchlange::stelleEin(Aufgabe aufgabe) {
    {
        const std::scoped_lock sperre(schloss_);
        if (geschlossen_) {
            return;
        }
        aufgaben_.push_back(std::move(aufgabe));
    }
    wecker_.notify_one();
}

std::optional<Aufgabe> AufgabenSchlange::nimm() {
    std::unique_lock sperre(schloss_);
    wecker_.wait(sperre, [this] { return geschlossen_ || !aufgaben_.empty(); });
    if (aufgaben_.empty()) {
        return std::nullopt;
    }
    Aufgabe aufgabe = std::move(aufgaben_.front());
    aufgaben_.pop_front();
    return aufgabe;
}

void AufgabenSchlange::schliesse(Rest rest) {
    std::deque<Aufgabe> fallenGelassen;  // destroyed outside the lock: a task may own anything
    {
        const std::scoped_lock sperre(schloss_);
        geschlossen_ = true;
        if (rest == Rest::faellt) {
            fallenGelassen.swap(aufgaben_);
        }
    }
    wecker_.notify_all();
}

}  // namespace spurkiste
