#pragma once

#include <functional>

namespace spurkiste {

/// One piece of work. Copyable, because GCC 12 has no std::move_only_function.
using Aufgabe = std::function<void()>;

/// Something that runs tasks later: the main loop, a pool of threads, or a queue that a test empties by hand.
/// Whoever owns the implementation says on which thread the tasks run.
class Ausfuehrer {
  public:
    Ausfuehrer() = default;
    Ausfuehrer(const Ausfuehrer&) = delete;
    Ausfuehrer& operator=(const Ausfuehrer&) = delete;
    virtual ~Ausfuehrer() = default;

    /// Takes the task and returns at once. Callable from any thread. The task must not throw.
    /// A task that is still waiting when the executor ends is dropped without being run, unless it says otherwise.
    virtual void fuehreAus(Aufgabe aufgabe) = 0;
};

}  // namespace spurkiste
