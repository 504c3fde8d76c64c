#pragma once

#include <string>

namespace spurkiste {

/// The desktop's file manager. Bound to the main thread.
class Dateimanager {
  public:
    Dateimanager() = default;
    Dateimanager(const Dateimanager&) = delete;
    Dateimanager& operator=(const Dateimanager&) = delete;
    virtual ~Dateimanager() = default;

    /// Shows the file, an absolute path, selected in a window of the file manager, or at least its folder. Returns at
    /// once and reports nothing: a file that is gone, or a desktop without file manager, shows nothing.
    virtual void zeige(const std::string& pfad) = 0;
};

}  // namespace spurkiste
