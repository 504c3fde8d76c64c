#include "cli/Dateiauswahl.h"

#include <algorithm>
#include <filesystem>
#include <latch>
#include <system_error>
#include <utility>

#include "base/ArbeiterPool.h"
#include "base/Dateien.h"
#include "base/Text.h"

namespace spurkiste::dateiauswahl {

std::vector<std::string> imOrdner(const std::string& ordner) {
    const std::string praefix = ordner.ends_with('/') ? ordner : ordner + "/";
    std::vector<std::string> pfade;
    for (const std::string& name : dateien::liste(ordner)) {
        if (text::klein(dateien::endung(name)) == "gpx") {
            pfade.push_back(praefix + name);
        }
    }
    std::sort(pfade.begin(), pfade.end());
    return pfade;
}

std::vector<Fund> sammle(const std::vector<std::string>& worte) {
    std::vector<Fund> funde;
    for (const std::string& wort : worte) {
        std::error_code fehler;
        if (!std::filesystem::is_directory(wort, fehler)) {
            funde.push_back({wort, fehler});
            continue;
        }
        try {
            for (std::string& pfad : imOrdner(wort)) {
                funde.push_back({std::move(pfad)});
            }
        } catch (const std::system_error& ausnahme) {  // the other words still count
            funde.push_back({wort, ausnahme.code()});
        }
    }
    return funde;
}

void fuerAlle(std::size_t anzahl, const std::function<void(std::size_t)>& tue) {
    std::latch offen(static_cast<std::ptrdiff_t>(anzahl));
    ArbeiterPool arbeiter;
    for (std::size_t i = 0; i < anzahl; ++i) {
        arbeiter.fuehreAus([&tue, &offen, i] {
            tue(i);
            offen.count_down();
        });
    }
    offen.wait();
}

}  // namespace spurkiste::dateiauswahl
