#pragma once

#include <chrono>

#include "base/Ausfuehrer.h"

namespace spurkiste {

/// Runs tasks on the main thread after some time. Whoever owns the implementation says by which clock.
class Wecker {
  public:
    Wecker() = default;
    Wecker(const Wecker&) = delete;
    Wecker& operator=(const Wecker&) = delete;
    virtual ~Wecker() = default;

    /// Takes the task and returns at once. Main thread. The task must not throw; one that still waits when the alarm
    /// clock ends is dropped.
    virtual void wecke(std::chrono::milliseconds nach, Aufgabe aufgabe) = 0;
};

}  // namespace spurkiste
