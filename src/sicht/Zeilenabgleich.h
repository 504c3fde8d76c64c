#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "sicht/Zeile.h"

namespace spurkiste {

/// Rows in the order in which they are shown, and where each file's row stands. A value that does not change; the rows
/// are shared.
class Zeilenliste {
  public:
    static constexpr int kKeine = -1;

    Zeilenliste() = default;
    /// No row is null and no file occurs twice. The index is a table over Zeile::kennung() instead of a hash: those
    /// numbers are given out one after the other, so it is as long as there have been files.
    explicit Zeilenliste(std::vector<std::shared_ptr<const Zeile>> zeilen);

    [[nodiscard]] int anzahl() const { return static_cast<int>(zeilen_.size()); }
    [[nodiscard]] const Zeile& zeile(int stelle) const { return *zeilen_[static_cast<std::size_t>(stelle)]; }
    /// The same as zeile(stelle).kennung(), without touching the row: a list of rows is spread over the whole memory.
    [[nodiscard]] std::uint32_t kennung(int stelle) const { return kennungen_[static_cast<std::size_t>(stelle)]; }
    [[nodiscard]] const std::vector<std::uint32_t>& kennungen() const { return kennungen_; }
    /// Where the file's row stands, or kKeine.
    [[nodiscard]] int stelleVon(std::uint32_t kennung) const {
        return kennung < stellen_.size() ? stellen_[kennung] : kKeine;
    }
    /// Whether it consists of these very rows.
    [[nodiscard]] bool istGleich(const std::vector<std::shared_ptr<const Zeile>>& zeilen) const {
        return zeilen_ == zeilen;
    }

  private:
    std::vector<std::shared_ptr<const Zeile>> zeilen_;
    std::vector<std::uint32_t> kennungen_;
    std::vector<int> stellen_;  // by Zeile::kennung()
};

/// Neighbouring rows of a list.
struct Spanne {
    int von = 0;
    int anzahl = 0;

    friend bool operator==(const Spanne&, const Spanne&) = default;
};

/// What makes a list of rows another one. A value that does not know who shows the rows.
struct Zeilenabgleich {
    std::vector<Spanne> weg;        ///< positions in the old list that go, ascending, never adjoining
    std::vector<Spanne> dazu;       ///< positions in the new list that come, likewise
    std::vector<Spanne> geaendert;  ///< positions in the new list where a file got another row, likewise
    bool umgestellt = false;        ///< whether the files that stay change their order

    /// Compares two lists, in time linear in their lengths.
    [[nodiscard]] static Zeilenabgleich zwischen(const Zeilenliste& alt, const Zeilenliste& neu);
};

}  // namespace spurkiste
