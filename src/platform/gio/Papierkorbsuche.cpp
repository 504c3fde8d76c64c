#include "platform/gio/Papierkorbsuche.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <gio/gio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/Dateien.h"

namespace spurkiste::papierkorbsuche {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEndung = ".trashinfo";

/// A trash and the folder that relative paths in its notes begin at.
struct Korb {
    std::string ordner;
    std::string anfang;
};

/// The path as it is without links, but for the last component.
std::string echterPfad(const std::string& pfad) {
    std::error_code fehlt;
    const fs::path ordner = fs::canonical(dateien::ordnerVon(pfad), fehlt);
    return fehlt ? pfad : dateien::kindPfad(ordner.native(), dateien::letzterTeil(pfad));
}

/// The topmost folder above the path on the same file system.
std::string wurzel(const std::string& echt, std::uint64_t geraet) {
    fs::path ordner = fs::path(echt).parent_path();
    while (ordner.has_relative_path()) {
        const auto darueber = kennung(ordner.parent_path().native());
        if (!darueber || darueber->geraet != geraet) {
            break;
        }
        ordner = ordner.parent_path();
    }
    return ordner.native();
}

void merke(std::vector<Korb>& koerbe, Korb korb) {
    const bool neu = std::none_of(koerbe.begin(), koerbe.end(),
                                  [&](const Korb& bekannter) { return bekannter.ordner == korb.ordner; });
    if (neu && kennung(korb.ordner)) {
        koerbe.push_back(std::move(korb));
    }
}

/// All that GIO may have chosen for these files.
std::vector<Korb> koerbeVon(const Vermisste& vermisste) {
    std::vector<Korb> koerbe;
    merke(koerbe, {dateien::kindPfad(g_get_user_data_dir(), "Trash"), "/"});
    std::string letzterOrdner;
    for (const Vermisster& vermisster : vermisste) {
        if (std::string ordner = dateien::ordnerVon(vermisster.pfad); ordner != letzterOrdner) {
            letzterOrdner = std::move(ordner);
            const std::string oben = wurzel(echterPfad(vermisster.pfad), vermisster.kennung.geraet);
            const std::string nutzer = std::to_string(::getuid());
            merke(koerbe, {dateien::kindPfad(dateien::kindPfad(oben, ".Trash"), nutzer), oben});
            merke(koerbe, {dateien::kindPfad(oben, ".Trash-" + nutzer), oben});
        }
    }
    return koerbe;
}

/// Where the file came from, as the note says; empty when it does not.
std::string herkunft(const std::string& notiz, const std::string& anfang) {
    const std::unique_ptr<GKeyFile, void (*)(GKeyFile*)> datei(g_key_file_new(), &g_key_file_unref);
    if (g_key_file_load_from_file(datei.get(), notiz.c_str(), G_KEY_FILE_NONE, nullptr) == FALSE) {
        return {};
    }
    using Text = std::unique_ptr<char, void (*)(gpointer)>;
    const Text roh(g_key_file_get_string(datei.get(), "Trash Info", "Path", nullptr), &g_free);
    const Text pfad(roh ? g_uri_unescape_string(roh.get(), nullptr) : nullptr, &g_free);
    if (!pfad) {
        return {};
    }
    const std::string_view text(pfad.get());
    return text.starts_with('/') ? std::string(text) : dateien::kindPfad(anfang, text);
}

/// The part of a name that GIO keeps when it numbers files of the same name.
std::string_view stamm(std::string_view name) {
    return name.substr(0, name.find('.'));
}

class Suche {
  public:
    explicit Suche(const Vermisste& vermisste) {
        for (const Vermisster& vermisster : vermisste) {
            pfade_[vermisster.pfad] = &vermisster;
            pfade_[echterPfad(vermisster.pfad)] = &vermisster;
            staemme_.emplace(stamm(dateien::letzterTeil(vermisster.pfad)));
        }
    }

    void sucheIn(const Korb& korb) {
        const std::string notizen = dateien::kindPfad(korb.ordner, "info");
        std::vector<std::string> namen;
        try {
            namen = dateien::liste(notizen);
        } catch (const std::system_error&) {
            return;
        }
        for (const std::string& name : namen) {
            // A trash may hold many thousand files: only what can be meant is opened.
            if (name.ends_with(kEndung) && staemme_.contains(std::string(stamm(name)))) {
                const std::string_view datei = std::string_view(name).substr(0, name.size() - kEndung.size());
                pruefe(dateien::kindPfad(dateien::kindPfad(korb.ordner, "files"), datei),
                       herkunft(dateien::kindPfad(notizen, name), korb.anfang));
            }
        }
    }

    [[nodiscard]] std::vector<Papierkorb::Fund> funde() && { return std::move(funde_); }

  private:
    void pruefe(const std::string& ort, const std::string& herkunft) {
        const auto gesucht = pfade_.find(herkunft);
        if (gesucht != pfade_.end() && kennung(ort) == gesucht->second->kennung) {
            funde_.push_back({gesucht->second->pfad, ort, dateien::stand(ort)});
        }
    }

    std::unordered_map<std::string, const Vermisster*> pfade_;
    std::unordered_set<std::string> staemme_;
    std::vector<Papierkorb::Fund> funde_;
};

}  // namespace

std::optional<Kennung> kennung(const std::string& pfad) {
    struct stat angaben {};
    if (::lstat(pfad.c_str(), &angaben) != 0) {
        return std::nullopt;
    }
    return Kennung{angaben.st_dev, angaben.st_ino};
}

std::vector<Papierkorb::Fund> finde(const Vermisste& vermisste) {
    if (vermisste.empty()) {
        return {};
    }
    Suche suche(vermisste);
    for (const Korb& korb : koerbeVon(vermisste)) {
        suche.sucheIn(korb);
    }
    return std::move(suche).funde();
}

std::string notizZu(const std::string& ort) {
    const std::string korb = fs::path(ort).parent_path().parent_path().native();
    return dateien::kindPfad(dateien::kindPfad(korb, "info"), std::string(dateien::letzterTeil(ort)).append(kEndung));
}

}  // namespace spurkiste::papierkorbsuche
