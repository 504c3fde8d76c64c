#pragma once

#include <memory>
#include <utility>

#include "base/Ausfuehrer.h"

namespace spurkiste {

/// The way back to an object that lives on one thread, for what was done for it elsewhere. A member of that object,
/// the last one, so that it goes first: what comes back later is dropped, without touching the object. Its functions
/// are called on that thread.
class Rueckweg {
  public:
    /// The executor runs tasks on the object's thread; it must outlive the tasks that find their way back.
    explicit Rueckweg(Ausfuehrer& hier) : hier_(&hier) {}
    Rueckweg(const Rueckweg&) = delete;
    Rueckweg& operator=(const Rueckweg&) = delete;
    ~Rueckweg() = default;

    /// A function for any thread that takes values along and lets `lande` have them on the object's thread, later, and
    /// only if the object is still there. `lande` may thus refer to the object.
    template <typename Lande>
    [[nodiscard]] auto zurueck(Lande lande) const {
        return [hier = hier_, lebt = std::weak_ptr(lebt_), lande = std::move(lande)](auto... werte) {
            hier->fuehreAus([lebt, lande, ... werte = std::move(werte)] {
                if (!lebt.expired()) {
                    lande(werte...);
                }
            });
        };
    }

    /// A task for the object's own thread that does nothing once the object is gone.
    template <typename Tue>
    [[nodiscard]] Aufgabe hier(Tue tue) const {
        return [lebt = std::weak_ptr(lebt_), tue = std::move(tue)] {
            if (!lebt.expired()) {
                tue();
            }
        };
    }

    /// Lets another executor run `arbeite`, which must not refer to the object, and `lande` have its result as above.
    template <typename Arbeite, typename Lande>
    void hinUndZurueck(Ausfuehrer& dort, Arbeite arbeite, Lande lande) const {
        dort.fuehreAus([arbeite = std::move(arbeite), heim = zurueck(std::move(lande))] { heim(arbeite()); });
    }

  private:
    Ausfuehrer* hier_;
    std::shared_ptr<const bool> lebt_ = std::make_shared<const bool>(true);
};

}  // namespace spurkiste
