#pragma once

#include <QObject>

#include "base/Ausfuehrer.h"

namespace spurkiste {

/// Runs tasks in the event loop of the thread that created it, in the order in which they were handed over.
class QtAusfuehrer final : public Ausfuehrer {
  public:
    void fuehreAus(Aufgabe aufgabe) override;

  private:
    QObject empfaenger_;  // lives in the creating thread; tasks waiting when it ends are dropped by the toolkit
};

}  // namespace spurkiste
