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
    /// What becomes of the waiting tasks at the end: those that only read may fall, those that write must be done.
    using AmEnde = AufgabenSchlange::Rest;

    /// Starts `arbeiter` threads, at least one; 0 means one per processor core. Fewer when the system gives no more;
    /// throws std::system_error when it gives none.
    explicit ArbeiterPool(unsigned arbeiter = 0, AmEnde amEnde = AmEnde::faellt);

    /// Takes no more tasks, drops those that wait or runs them all, and waits for the running ones.
    ~ArbeiterPool() override;

    void fuehreAus(Aufgabe aufgabe) override;

  private:
    void arbeite();

    AmEnde amEnde_;
    AufgabenSchlange schlange_;
    std::vector<std::jthread> faeden_;
};

}  // namespace spurkiste
