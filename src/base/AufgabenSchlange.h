#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

#include "base/Ausfuehrer.h"

namespace spurkiste {

/// A first-in, first-out queue of tasks between threads. Holds the only lock of the program.
/// Every member may be called from any thread.
class AufgabenSchlange {
  public:
    /// Appends a task and wakes one waiter. After schliesse() the task is dropped.
    void stelleEin(Aufgabe aufgabe);

    /// Waits for the next task. Nothing once the queue is closed, even when tasks were still waiting.
    [[nodiscard]] std::optional<Aufgabe> nimm();

    /// Drops the waiting tasks and lets every present and later nimm() return nothing.
    void schliesse();

  private:
    std::mutex schloss_;
    std::condition_variable wecker_;
    std::deque<Aufgabe> aufgaben_;
    bool geschlossen_ = false;
};

}  // namespace spurkiste
