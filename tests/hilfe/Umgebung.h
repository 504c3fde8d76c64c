#pragma once

#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace spurkiste {

/// Environment variables for one scope: those given are set, or removed where the value is absent; afterwards all are
/// as they were.
class Umgebung {
  public:
    using Wert = std::optional<std::string>;

    Umgebung(std::initializer_list<std::pair<std::string, Wert>> werte) {
        for (const auto& [name, wert] : werte) {
            const char* alt = std::getenv(name.c_str());
            vorher_.emplace_back(name, alt == nullptr ? Wert() : Wert(alt));
            setze(name, wert);
        }
    }
    Umgebung(const Umgebung&) = delete;
    Umgebung& operator=(const Umgebung&) = delete;
    ~Umgebung() {
        for (const auto& [name, wert] : vorher_) {
            setze(name, wert);
        }
    }

  private:
    static void setze(const std::string& name, const Wert& wert) {
        if (wert) {
            ::setenv(name.c_str(), wert->c_str(), 1);
        } else {
            ::unsetenv(name.c_str());
        }
    }

    std::vector<std::pair<std::string, Wert>> vorher_;
};

}  // namespace spurkiste
