#pragma once

#include <thread>
#include <vector>

#include "base/AufgabenSchlange.h"
#include "base/Ausfuehrer.h"

namespace spurkiste {

/// A fixed number of threads that take tasks in the order in which they were handed over.
/// A waiting task costs its closure and nothing more.
class ArbeiterPool final : public Ausfuehrer {
  public:
    /// Starts `arbeiter` threads, at least one; 0 means one per processor core.
    explicit ArbeiterPool(unsigned arbeiter = 0);

    /// Drops the waiting tasks and waits for the running ones.
    ~ArbeiterPool() override;

    void fuehreAus(Aufgabe aufgabe) override;

  private:
    AufgabenSchlange schlange_;
    std::vector<std::jthread> faeden_;
};

}  // namespace spurkiste
