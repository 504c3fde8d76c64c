#pragma once

#include <functional>
#include <string>

#include "platform/Dateimanager.h"

namespace spurkiste {

/// The file manager that answers on the session bus (org.freedesktop.FileManager1,
/// https://www.freedesktop.org/wiki/Specifications/file-manager-interface/); without one, the program that opens
/// folders. GUI thread.
class QtDateimanager final : public Dateimanager {
  public:
    void zeige(const std::string& pfad, std::function<void()> vergeblich) override;
};

}  // namespace spurkiste
