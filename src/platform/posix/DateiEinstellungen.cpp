#include "platform/posix/DateiEinstellungen.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <system_error>
#include <utility>

#include <fcntl.h>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "base/Dateirechte.h"

namespace spurkiste {

namespace {

std::string maskiere(std::string_view wert) {
    std::string zeile;
    for (const char zeichen : wert) {
        if (zeichen == '\\') {
            zeile += "\\\\";
        } else if (zeichen == '\n') {
            zeile += "\\n";
        } else {
            zeile += zeichen;
        }
    }
    return zeile;
}

std::string demaskiere(std::string_view zeile) {
    std::string wert;
    for (std::size_t i = 0; i < zeile.size(); ++i) {
        if (zeile[i] == '\\' && i + 1 < zeile.size()) {
            ++i;
            wert += zeile[i] == 'n' ? '\n' : zeile[i];
        } else {
            wert += zeile[i];
        }
    }
    return wert;
}

}  // namespace

DateiEinstellungen::DateiEinstellungen(std::string pfad) : pfad_(std::move(pfad)) {
    (void)liesDatei();
}

bool DateiEinstellungen::liesDatei() {
    constexpr std::size_t hoechstens = std::size_t{1} << 20U;  // thousands of times what the program writes
    std::string inhalt;
    try {
        dateien::Leser leser(pfad_);
        if (leser.groesse() > hoechstens) {
            return true;
        }
        inhalt.resize(leser.groesse());
        if (leser.lies(inhalt) < inhalt.size()) {
            return false;
        }
    } catch (const std::system_error&) {
        if (dateien::angaben(pfad_)) {
            return false;
        }
    }
    std::string_view rest = inhalt;
    while (!rest.empty()) {
        const auto zeile = rest.substr(0, rest.find('\n'));
        if (const auto gleich = zeile.find('='); gleich != std::string_view::npos) {
            werte_[std::string(zeile.substr(0, gleich))] = demaskiere(zeile.substr(gleich + 1));
        }
        rest.remove_prefix(std::min(rest.size(), zeile.size() + 1));
    }
    return true;
}

std::optional<std::string> DateiEinstellungen::lies(std::string_view schluessel) const {
    const auto stelle = werte_.find(schluessel);
    return stelle == werte_.end() ? std::nullopt : std::optional(stelle->second);
}

void DateiEinstellungen::schreibe(std::string_view schluessel, std::string_view wert) {
    assert(schluessel.find_first_of("=\n") == std::string_view::npos);
    offen_.insert_or_assign(std::string(schluessel), std::string(wert));
    const bool gelesen = liesDatei();  // another program may have written since
    for (const auto& [s, w] : offen_) {
        werte_.insert_or_assign(s, w);
    }
    if (!gelesen) {
        return;  // the others' values would be lost; the next change may have more luck
    }
    try {
        schreibeDatei();
        offen_.clear();
    } catch (const std::system_error&) {
        // A read-only home is no reason to stop: the value holds for this run.
        return;
    }
}

void DateiEinstellungen::schreibeDatei() const {
    const auto name = dateien::letzterTeil(pfad_);
    dateien::erstelleOrdner(pfad_.substr(0, pfad_.size() - name.size()));
    const dateien::Dateinummer altes(pfad_, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
    dateien::AtomareDatei datei(pfad_);
    for (const auto& [schluessel, wert] : werte_) {
        datei.schreibe(schluessel + "=" + maskiere(wert) + "\n");
    }
    if (altes.offen()) {
        dateien::uebernimmMerkmale(altes.wert(), datei.nummer());
        dateien::uebernimmRechte(altes.wert(), datei.nummer(), dateien::kLesenUndSchreiben);
    }
    datei.sichere();
    datei.uebernimm();
}

std::optional<std::string> DateiEinstellungen::ortDerSuite(std::string_view suite) {
    std::string ordner;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg != nullptr && *xdg == '/') {
        ordner = xdg;
    } else if (const char* heim = std::getenv("HOME"); heim != nullptr && *heim == '/') {
        ordner = std::string(heim) + "/.config";
    } else {
        return std::nullopt;
    }
    return ordner.append("/").append(suite).append("/einstellungen.conf");
}

}  // namespace spurkiste
