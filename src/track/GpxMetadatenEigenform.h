#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Reads records in exactly the form in which GpxMetadatenJson writes them, straight from the bytes: members in order
/// and no white space, numbers without superfluous digits, escapes only where they are required. What it reads, the
/// general reader reads to an equal record; what is written otherwise, valid or not, it does not read. One thread.
class GpxMetadatenEigenform {
  public:
    /// How many zero bytes must follow the bytes that are read: more than a coordinate takes.
    static constexpr std::size_t kPolster = 128;

    /// The record of a path that somebody has already; null when there is none.
    using Bekannte = std::function<Eintrag(const std::string& pfad)>;

    /// The sketches go into `lager`. A record that is equal to the one in `bekannte` (may be empty) is that one.
    GpxMetadatenEigenform(Skizze::Lager& lager, const Bekannte& bekannte) : lager_(lager), bekannte_(bekannte) {}
    GpxMetadatenEigenform(const GpxMetadatenEigenform&) = delete;
    GpxMetadatenEigenform& operator=(const GpxMetadatenEigenform&) = delete;
    ~GpxMetadatenEigenform() = default;

    /// Reads from the beginning of `bytes` one member of an object: a record's path, a colon and the record. Null when
    /// something else stands there.
    [[nodiscard]] Eintrag lies(std::string_view bytes);

    /// How many bytes the record took that was read last; when it was none, up to where it might have become one. A
    /// position less than kPolster before the end of the bytes may mean that only more of them were needed.
    [[nodiscard]] std::size_t gelesen() const { return gelesen_; }

  private:
    Skizze::Lager& lager_;
    const Bekannte& bekannte_;
    GpxMetadaten entwurf_;  // filled anew for each record
    Skizze::Bau bau_;
    std::size_t gelesen_ = 0;
};

}  // namespace spurkiste
