#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Ausfuehrer.h"
#include "base/Rueckweg.h"
#include "library/CacheAbdruck.h"
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

    /// What is known of the folder's cache file as it was last written or read; null when nothing is.
    [[nodiscard]] std::shared_ptr<const CacheAbdruck> abdruck(const std::string& ordner) const;
    /// Somebody has read the file of the folder while nothing was written.
    void merke(const std::string& ordner, std::shared_ptr<const CacheAbdruck> abdruck);

    /// Calls `dann` when nothing is written and nothing waits: now or later.
    void wennRuhig(Nachher dann);

  private:
    struct Stand {
        std::string ordner;
        std::vector<Eintrag> eintraege;
        std::vector<Nachher> nachher;
    };

    void beginne();
    void lande(const std::string& ordner, std::shared_ptr<const CacheAbdruck> abdruck);

    Ausfuehrer* schreiber_;
    bool schreibt_ = false;
    std::string bekannterOrdner_;  // whose file abdruck_ speaks of
    std::shared_ptr<const CacheAbdruck> abdruck_;
    std::vector<Nachher> nachDiesem_;  // when the write under way has ended
    std::deque<Stand> wartende_;       // one for each folder
    std::vector<Nachher> wennRuhig_;
    Rueckweg rueckweg_;
};

}  // namespace spurkiste
