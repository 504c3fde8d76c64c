#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "base/Ausfuehrer.h"
#include "base/Rueckweg.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Sees to it that cache files are written away from the main thread: never two at once, and what waits is the newest
/// state of each folder alone. Ending it hands over what still waits. Bound to the main thread.
class CacheDienst {
  public:
    using Nachher = std::function<void()>;

    /// `schreiber` runs the writes; when the service ends while one is under way it gets the next at once, and must
    /// then keep the order. Both must outlive the tasks they are given.
    CacheDienst(Ausfuehrer& hauptfaden, Ausfuehrer& schreiber) : schreiber_(&schreiber), rueckweg_(hauptfaden) {}
    CacheDienst(const CacheDienst&) = delete;
    CacheDienst& operator=(const CacheDienst&) = delete;
    ~CacheDienst();

    /// The cache file of the folder is to hold these records. `nachher` (none empty) is called when it does, or does
    /// the records that were handed over later, or cannot be written: which costs the next load its speed and nobody an
    /// error.
    void schreibe(const std::string& ordner, std::vector<Eintrag> eintraege, std::vector<Nachher> nachher);

    /// Calls `dann` when nothing is written and nothing waits: now or later.
    void wennRuhig(Nachher dann);

  private:
    struct Stand {
        std::string ordner;
        std::vector<Eintrag> eintraege;
        std::vector<Nachher> nachher;
    };

    void beginne();
    void lande();

    Ausfuehrer* schreiber_;
    bool schreibt_ = false;
    std::vector<Nachher> nachDiesem_;  // when the write under way has ended
    std::deque<Stand> wartende_;       // one for each folder
    std::vector<Nachher> wennRuhig_;
    Rueckweg rueckweg_;
};

}  // namespace spurkiste
