#include "platform/gio/GioPapierkorb.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include <gio/gio.h>

#include "base/Dateiumzug.h"
#include "base/Text.h"
#include "platform/gio/Papierkorbsuche.h"

namespace spurkiste {

namespace {

/// Moves one file, which may be a link, to the trash. Why it failed; nothing when it did not.
std::optional<std::string> wirfWeg(const std::string& pfad) {
    const std::unique_ptr<GFile, void (*)(gpointer)> datei(g_file_new_for_path(pfad.c_str()), &g_object_unref);
    GError* roh = nullptr;
    if (g_file_trash(datei.get(), nullptr, &roh) != FALSE) {
        return std::nullopt;
    }
    const std::unique_ptr<GError, void (*)(GError*)> fehler(roh, &g_error_free);
    return text::einzeilig(fehler->message);
}

/// Whether there is nothing at the path, not even a link that leads nowhere.
bool istVerschwunden(const std::string& pfad) {
    std::error_code fehler;
    return std::filesystem::symlink_status(pfad, fehler).type() == std::filesystem::file_type::not_found;
}

Papierkorb::Ergebnis wirfAlleWeg(const std::vector<std::string>& pfade) {
    Papierkorb::Ergebnis ergebnis;
    papierkorbsuche::Vermisste vermisste;
    for (const std::string& pfad : pfade) {
        const auto kennung = papierkorbsuche::kennung(pfad);
        auto fehler = wirfWeg(pfad);
        if (!fehler) {
            ergebnis.verschoben.push_back(pfad);
            if (kennung) {
                vermisste.push_back({pfad, *kennung});
            }
        } else if (istVerschwunden(pfad)) {
            ergebnis.verschwunden.push_back(pfad);
        } else if (!ergebnis.fehler) {
            ergebnis.fehler = std::move(fehler);
        }
    }
    ergebnis.funde = papierkorbsuche::finde(vermisste);
    return ergebnis;
}

}  // namespace

void GioPapierkorb::verschiebe(std::vector<std::string> pfade, Fertig fertig) {
    arbeiter_.fuehreAus([pfade = std::move(pfade), fertig = std::move(fertig)] { fertig(wirfAlleWeg(pfade)); });
}

void GioPapierkorb::holeZurueck(const Fund& fund) const {
    dateien::verschiebe(fund.ort, fund.pfad);
    std::error_code bleibt;  // what has no file any more is passed over by every desktop
    std::filesystem::remove(papierkorbsuche::notizZu(fund.ort), bleibt);
}

}  // namespace spurkiste
