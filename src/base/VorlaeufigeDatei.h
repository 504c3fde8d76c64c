#pragma once

#include <string>
#include <string_view>

#include "base/Dateien.h"
#include "base/Dateinummer.h"

/// Files on their way to a place of their own. Every function may be called from any thread.
namespace spurkiste::dateien {

/// A new file that nobody shall see before it is complete: without a name where the system can do that, elsewhere under
/// a hidden temporary one, in the folder of its later place. Without such a place it vanishes at the end. Only a
/// program that is killed while the file has a temporary name leaves something behind, for raeumeAuf(); until then the
/// file is locked, so that raeumeAuf() knows that somebody still writes it. It begins as its owner's alone (0600).
class VorlaeufigeDatei {
  public:
    /// Throws std::system_error when the folder cannot be written.
    explicit VorlaeufigeDatei(const std::string& ordner);
    VorlaeufigeDatei(const VorlaeufigeDatei&) = delete;
    VorlaeufigeDatei& operator=(const VorlaeufigeDatei&) = delete;
    ~VorlaeufigeDatei();

    [[nodiscard]] int nummer() const { return nummer_.wert(); }
    [[nodiscard]] bool hatNamen() const { return !name_.empty(); }

    /// Appends bytes. Throws std::system_error (disk full, quota).
    void schreibe(std::string_view bytes);

    /// Waits until the bytes are on the disk. Throws std::system_error.
    void sichere();

    /// Puts the file in the place of whatever file is at the path, which lies in the folder, and closes it. Throws
    /// std::system_error; what was at the path is then unchanged. To be called once.
    void ersetze(const std::string& ziel);

    /// The same for a file at the path that is open for reading and was read at that state; false when another program
    /// has changed or replaced it since, or has it open for writing. Where the system can, both files change places and
    /// it is looked once more at what came out; a change is put back. A program that is killed in between leaves what
    /// came out under a hidden name that raeumeAuf() does not touch.
    [[nodiscard]] bool tausche(const std::string& ziel, int altes, const Stand& stand);

    /// Puts the file at the path, which lies in the folder; false when something is there already. To be called until
    /// it returns true. Throws std::system_error.
    [[nodiscard]] bool stelleHin(const std::string& ziel);

  private:
    /// Gives it a name that nothing cleans up, whatever lies under it later. False where that cannot be.
    [[nodiscard]] bool nenneDauerhaft();
    void schliesse();

    std::string ordner_;
    std::string name_;  // the temporary one; empty for a file without a name, and once it is in its place
    Dateinummer nummer_;
};

/// Waits until the disk knows the names in the folder; where that cannot be told, it is passed over.
void sichereOrdner(const std::string& ordner);

/// Whether a file of this name may be a VorlaeufigeDatei.
[[nodiscard]] bool istVorlaeufig(std::string_view name);

/// Removes a temporary file that a killed program has left behind; one that is still being written stays. Failures are
/// passed over.
void raeumeAuf(const std::string& pfad);

}  // namespace spurkiste::dateien
