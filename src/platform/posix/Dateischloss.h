#pragma once

#include <string>

#include "base/Dateinummer.h"

namespace spurkiste {

/// A lock between programs, held on a file that is made for it and stays. The system gives it back when its owner ends,
/// however that happens, and not before: a program that is stopped or busy still has it. Any thread.
class Dateischloss {
  public:
    enum class Ausgang { genommen, vergeben, unmoeglich };

    /// Tries to take the lock, without waiting. `vergeben`: another object has it, in this program or another;
    /// `unmoeglich`: the system makes no file or no lock here. To be called until it is taken.
    [[nodiscard]] Ausgang nimm(const std::string& pfad);

  private:
    dateien::Dateinummer datei_;
};

}  // namespace spurkiste
