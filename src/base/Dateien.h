#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/Dateinummer.h"
#include "base/Zeitpunkt.h"

/// Files and folders of the system, by absolute path in the system's own bytes (UTF-8 or not). Failures that a caller
/// must tell apart travel as std::system_error. Every function may be called from any thread.
namespace spurkiste::dateien {

/// What the library wants to know of a file without opening it.
struct Angaben {
    std::int64_t groesse = 0;  ///< bytes
    Zeitpunkt geaendert;       ///< time of the last change of the content
};

/// Size and date of a regular file, through symbolic links. Nothing for everything else (folders, FIFOs, sockets,
/// devices, dangling links) and when the system does not say.
[[nodiscard]] std::optional<Angaben> angaben(const std::string& pfad);

/// The same; `fehler` says why the system does not say, and nothing when there is something else than a file.
[[nodiscard]] std::optional<Angaben> angaben(const std::string& pfad, std::error_code& fehler);

/// The state of a file: as long as it stays equal, nobody has written into the file or put another in its place.
struct Stand {
    std::uint64_t geraet = 0;
    std::uint64_t nummer = 0;
    std::int64_t groesse = 0;
    std::int64_t sekunden = 0;  ///< of the last change of the content
    std::int64_t nanosekunden = 0;

    friend bool operator==(const Stand&, const Stand&) = default;
};

/// The state of what is at the path now, or of the link itself where links are not followed. Nothing when there is
/// nothing.
[[nodiscard]] std::optional<Stand> stand(const std::string& pfad, Verweise verweise = Verweise::folge);

/// The same of an open file, by the system's number; nothing when the system does not say.
[[nodiscard]] std::optional<Stand> stand(int nummer);

/// Whether anything, of any kind, is at the path; a dangling symbolic link counts as nothing.
[[nodiscard]] bool gibtEs(const std::string& pfad);

/// The names of the direct children, "." and ".." left out, hidden ones and those that are not UTF-8 included, in the
/// order of the system. Throws std::system_error when the folder cannot be listed.
[[nodiscard]] std::vector<std::string> liste(const std::string& ordner);

/// Creates the folder and its missing parents; an existing folder is no error.
/// Throws std::system_error when afterwards there is no folder at the path.
void erstelleOrdner(const std::string& ordner);

/// The path made absolute against the working directory, without "." and doubled or closing slashes. Symbolic links
/// stay, and so does "..", since it may lead through one. Throws std::system_error for an empty path and when the
/// working directory is gone.
[[nodiscard]] std::string absolut(const std::string& pfad);

/// The path that symbolic links lead to; the path itself where there is nothing yet.
[[nodiscard]] std::string hinterVerweisen(const std::string& pfad);

/// The last component of a path ("/a/b.gpx" gives "b.gpx").
[[nodiscard]] std::string_view letzterTeil(std::string_view pfad);

/// The folder of a path, with the slash at its end ("/a/b.gpx" gives "/a/", "b.gpx" gives "./").
[[nodiscard]] std::string ordnerVon(const std::string& pfad);

/// The path of a name in a folder, whether or not the folder's has a slash at its end.
[[nodiscard]] std::string kindPfad(const std::string& ordner, std::string_view name);

/// The extension of a name without its dot ("gpx"), as written. Empty without a dot, and for a name whose only dot is
/// its first character (".gpx" is a hidden name without an extension).
[[nodiscard]] std::string_view endung(std::string_view name);

/// The name without its extension and the dot before it.
[[nodiscard]] std::string_view ohneEndung(std::string_view name);

/// An open regular file, read from its start. Opening never blocks, whatever lies at the path.
class Leser {
  public:
    /// Throws std::system_error: EISDIR for a folder, EINVAL for everything else that is no regular file, or what the
    /// system says.
    explicit Leser(const std::string& pfad, Verweise verweise = Verweise::folge)
        : nummer_(Dateinummer::regulaere(pfad, verweise)) {}

    /// Nothing when the file cannot be opened or is no regular file.
    [[nodiscard]] static std::optional<Leser> oeffne(const std::string& pfad, Verweise verweise = Verweise::folge);

    /// Fills the buffer from the current position and returns how many bytes came: fewer than asked only at the end
    /// of the file or when reading failed, which callers treat alike.
    [[nodiscard]] std::size_t lies(std::span<char> puffer);

    /// The same; `fehler` becomes why reading failed and else stays as it is.
    [[nodiscard]] std::size_t lies(std::span<char> puffer, std::error_code& fehler);

    /// The same from the given position on, without regard to the current one and without moving it. Several threads
    /// at once.
    [[nodiscard]] std::size_t liesAb(std::uint64_t stelle, std::span<char> puffer) const;

    /// The same; `fehler` becomes why reading failed and else stays as it is.
    [[nodiscard]] std::size_t liesAb(std::uint64_t stelle, std::span<char> puffer, std::error_code& fehler) const;

    /// The size now, in bytes; it may change while somebody writes. Throws std::system_error when the system does not
    /// say.
    [[nodiscard]] std::size_t groesse() const;

    /// How many names (hard links) the file has, its own included; 1 when the system does not say.
    [[nodiscard]] std::uint64_t namen() const;

    /// Which state of which file this is; nothing when the system does not say.
    [[nodiscard]] std::optional<Stand> stand() const { return dateien::stand(nummer_.wert()); }

    /// The system's number of the file.
    [[nodiscard]] int nummer() const { return nummer_.wert(); }

  private:
    Dateinummer nummer_;
};

/// More than any file has that is read whole, a text of the program's own apart.
constexpr std::size_t kGrosserText = std::size_t{1} << 26U;

/// The whole content of a regular file. Nothing when it cannot be read or has more than so many bytes: a file that has
/// grown beyond all reason would only fill the memory.
[[nodiscard]] std::optional<std::string> liesGanz(const std::string& pfad, std::size_t hoechstens = kGrosserText);

}  // namespace spurkiste::dateien
