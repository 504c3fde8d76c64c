#pragma once

#include <cassert>
#include <cstddef>
#include <deque>
#include <utility>

#include "base/Ausfuehrer.h"

namespace spurkiste {

/// A queue of tasks that the test empties by hand, in any order it likes: what threads would do by chance becomes an
/// ordinary, repeatable sequence.
class HandAusfuehrer final : public Ausfuehrer {
  public:
    void fuehreAus(Aufgabe aufgabe) override { wartende_.push_back(std::move(aufgabe)); }

    [[nodiscard]] std::size_t wartende() const { return wartende_.size(); }

    /// Runs the waiting task at the position and removes it.
    void fuehre(std::size_t stelle) {
        assert(stelle < wartende_.size());
        const Aufgabe aufgabe = std::move(wartende_[stelle]);
        wartende_.erase(wartende_.begin() + static_cast<std::ptrdiff_t>(stelle));
        aufgabe();
    }

    /// Runs tasks, first come first served, until none waits; those that arrive meanwhile included.
    void fuehreAlle() {
        while (!wartende_.empty()) {
            fuehre(0);
        }
    }

  private:
    std::deque<Aufgabe> wartende_;
};

}  // namespace spurkiste
