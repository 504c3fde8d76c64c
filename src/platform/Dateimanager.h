#pragma once

#include <functional>
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
    /// once; `vergeblich`, which must not be empty, is called when there is no file manager at all, now or later.
    virtual void zeige(const std::string& pfad, std::function<void()> vergeblich) = 0;
};

}  // namespace spurkiste
