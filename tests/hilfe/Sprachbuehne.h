#pragma once

#include <string>

#include "hilfe/SpeicherEinstellungen.h"
#include "i18n/AppSprache.h"

namespace spurkiste {

/// A language for as long as it lives, German at first. Construct it before the widgets that ask for texts.
class Sprachbuehne {
  public:
    Sprachbuehne() { AppSprache::richteEin(&einstellungen_, nullptr); }
    ~Sprachbuehne() { AppSprache::richteEin(nullptr, nullptr); }
    Sprachbuehne(const Sprachbuehne&) = delete;
    Sprachbuehne& operator=(const Sprachbuehne&) = delete;

    void sprich(const std::string& code) { einstellungen_.schreibe("appLanguage", code); }

  private:
    SpeicherEinstellungen einstellungen_{{"appLanguage", "de"}};
};

}  // namespace spurkiste
