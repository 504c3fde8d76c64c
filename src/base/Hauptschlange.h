#pragma once

#include <functional>

#include "base/AufgabenSchlange.h"
#include "base/Ausfuehrer.h"

namespace spurkiste {

/// The main thread's executor of a program without an event loop: tasks posted from anywhere run inside laufe().
class Hauptschlange final : public Ausfuehrer {
  public:
    void fuehreAus(Aufgabe aufgabe) override;

    /// Runs tasks on the calling thread, sleeping while there are none, until beende() was called.
    void laufe();

    /// Lets laufe() return after the task in hand, for good. Waiting tasks are dropped. Callable from any thread.
    void beende();

  private:
    AufgabenSchlange schlange_;
};

}  // namespace spurkiste
