#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Papierkorb.h"

/// Where files lie that GIO has moved to the trash: its call does not say. Found by the notes that every trash keeps of
/// where its files came from, https://specifications.freedesktop.org/trash-spec/1.0/. Any thread.
namespace spurkiste::papierkorbsuche {

/// By what a file is known while it moves within its file system.
struct Kennung {
    std::uint64_t geraet = 0;
    std::uint64_t nummer = 0;

    friend bool operator==(const Kennung&, const Kennung&) = default;
};

/// Of what is at the path, a link itself; nothing when there is nothing.
[[nodiscard]] std::optional<Kennung> kennung(const std::string& pfad);

/// A file that has gone to the trash.
struct Vermisster {
    std::string pfad;  ///< where it was, absolute
    Kennung kennung;   ///< as it was there
};
using Vermisste = std::vector<Vermisster>;

/// Where they lie now, in the trash of the home or of their file system; what is not found is left out. Looks once into
/// each trash.
[[nodiscard]] std::vector<Papierkorb::Fund> finde(const Vermisste& vermisste);

/// The path of the note about a file in a trash, by the file's path there.
[[nodiscard]] std::string notizZu(const std::string& ort);

}  // namespace spurkiste::papierkorbsuche
