#pragma once

#include <QObject>

#include "base/Wecker.h"

namespace spurkiste {

/// Runs tasks in the event loop of the thread that created it.
class QtWecker final : public Wecker {
  public:
    void wecke(std::chrono::milliseconds nach, Aufgabe aufgabe) override;

  private:
    QObject empfaenger_;  // lives in the creating thread; tasks waiting when it ends are dropped by the toolkit
};

}  // namespace spurkiste
