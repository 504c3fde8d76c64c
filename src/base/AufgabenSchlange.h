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
    /// Appends a task and wakes one waiter. After schliesse() it is dropped.
    void stelleEin(Aufgabe aufgabe);

    /// What becomes of the tasks that wait when the queue is closed.
    enum class Rest { faellt, kommtDran };

    /// Waits for the next task. Nothing once the queue is closed and empty.
    [[nodiscard]] std::optional<Aufgabe> nimm();

    /// Takes no more tasks and lets nimm() return nothing, at once or when the waiting tasks have been taken.
    void schliesse(Rest rest = Rest::faellt);

  private:
    std::mutex schloss_;
    std::condition_variable wecker_;
    std::deque<Aufgabe> aufgaben_;
    bool geschlossen_ = false;
};

}  // namespace spurkiste
