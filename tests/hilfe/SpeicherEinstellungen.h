#pragma once

#include <map>
#include <string>

#include "platform/Einstellungen.h"
#include "platform/Systemumgebung.h"

namespace spurkiste {

/// Settings in memory.
class SpeicherEinstellungen final : public Einstellungen {
  public:
    SpeicherEinstellungen() = default;
    SpeicherEinstellungen(std::initializer_list<std::pair<const std::string, std::string>> werte) : werte_(werte) {}

    [[nodiscard]] std::optional<std::string> lies(std::string_view schluessel) const override {
        const auto stelle = werte_.find(std::string(schluessel));
        return stelle == werte_.end() ? std::nullopt : std::optional(stelle->second);
    }
    void schreibe(std::string_view schluessel, std::string_view wert) override {
        werte_.insert_or_assign(std::string(schluessel), std::string(wert));
    }

  private:
    std::map<std::string, std::string> werte_;
};

/// A system that says what the test wants.
class FesteUmgebung final : public Systemumgebung {
  public:
    std::vector<std::string> sprachen;
    std::optional<std::string> dokumente;

    [[nodiscard]] std::vector<std::string> bevorzugteSprachen() const override { return sprachen; }
    [[nodiscard]] std::optional<std::string> dokumenteOrdner() const override { return dokumente; }
};

}  // namespace spurkiste
