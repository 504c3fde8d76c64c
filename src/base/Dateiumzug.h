#pragma once

#include <string>

/// Moving and copying files so that nothing is ever overwritten, not even what appears between a test and the deed.
/// Paths as in base/Dateien. Every function may be called from any thread.
namespace spurkiste::dateien {

/// Gives the file another path on the same file system. A symbolic link is moved itself, not what it leads to. Where
/// letter case makes no difference to the file system, a name may change into itself in other letters.
/// Throws std::system_error; the file then has its old path and no other. EEXIST: something, of whatever kind, a
/// dangling link included, is at the new path.
void verschiebe(const std::string& alt, const std::string& neu);

/// The copy of a file on its way into a folder: it has no name there until it is complete and put into place. Shares
/// the source's blocks where the file system can. Has the source's date of last change, and its permissions, but
/// everybody's right to execute it taken and its owner's right to read and write it given.
class Kopie {
  public:
    /// Copies what the source holds at the beginning, through symbolic links, without ever waiting for another
    /// program. Throws std::system_error: EISDIR for a folder, EINVAL for everything else that is no regular file,
    /// and whatever keeps the source from being read or the folder from being written.
    Kopie(const std::string& quelle, const std::string& ordner);
    Kopie(const Kopie&) = delete;
    Kopie& operator=(const Kopie&) = delete;
    /// A copy without a place vanishes. Where the file system knows files without a name, it does so even when the
    /// program is killed; elsewhere a hidden file with the extension "tmp" stays behind then.
    ~Kopie();

    /// Puts the copy at the path, which lies directly in the folder; false when something is there already. To be
    /// called until it returns true. Throws std::system_error.
    [[nodiscard]] bool stelleHin(const std::string& ziel);

  private:
    void schliesse();

    std::string vorlaeufig_;  // empty for a file that has no name, and once it is in place
    int nummer_ = -1;
};

}  // namespace spurkiste::dateien
