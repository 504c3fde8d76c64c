#pragma once

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include <sys/types.h>

struct stat;

/// The ground that the other file modules stand on. Every function may be called from any thread.
namespace spurkiste::dateien {

/// The exception for an error number of the system.
[[nodiscard]] std::system_error systemfehler(int nummer);

/// Throws std::system_error (EINVAL) for a path with a zero in it: the system would take it only up to there and so
/// mean another one.
void pruefePfad(const std::string& pfad);

/// Whether an error's number says that system or file system do not know this way of doing something, rather than that
/// the deed itself failed.
[[nodiscard]] bool kenntDasNicht(int fehler);

/// What is to become of a symbolic link at the end of a path.
enum class Verweise {
    folge,    ///< what it leads to is meant
    lehneAb,  ///< it is no file: for paths at which somebody else could have put it
};

/// Makes a system call, and makes it again as long as a signal has interrupted it: file systems of the network let
/// themselves be interrupted anywhere.
template <typename Aufruf>
[[nodiscard]] auto ungestoert(Aufruf rufe) {
    auto ergebnis = rufe();
    while (ergebnis < 0 && errno == EINTR) {
        ergebnis = rufe();
    }
    return ergebnis;
}

/// An open file of the system, closed at the end.
class Dateinummer {
  public:
    /// None that is open.
    Dateinummer() = default;

    /// As open(2), closed to programs that this one starts. `rechte`, less the umask, are those of a file that it
    /// creates. When the system refuses, the object is not open and errno says why.
    Dateinummer(const std::string& pfad, int wie, mode_t rechte = 0);

    /// Opens a regular file for reading and nothing else; never blocks. Throws std::system_error: EISDIR for a folder,
    /// EINVAL for everything else that is no regular file, or what the system says.
    [[nodiscard]] static Dateinummer regulaere(const std::string& pfad, Verweise verweise = Verweise::folge);

    Dateinummer(Dateinummer&& andere) noexcept : nummer_(std::exchange(andere.nummer_, -1)) {}
    Dateinummer& operator=(Dateinummer&& andere) noexcept {
        std::swap(nummer_, andere.nummer_);
        return *this;
    }
    Dateinummer(const Dateinummer&) = delete;
    Dateinummer& operator=(const Dateinummer&) = delete;
    ~Dateinummer() { (void)schliesse(); }

    [[nodiscard]] bool offen() const { return nummer_ >= 0; }

    /// The system's number of the file; -1 when it is not open.
    [[nodiscard]] int wert() const { return nummer_; }

    /// What fstat(2) says. Throws std::system_error.
    [[nodiscard]] struct ::stat zustand() const;

    /// Closes the file now. False, with errno, when the system tells only now that something could not be written.
    [[nodiscard]] bool schliesse();

  private:
    int nummer_ = -1;
};

}  // namespace spurkiste::dateien
