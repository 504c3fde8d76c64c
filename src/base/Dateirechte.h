#pragma once

#include <string>
#include <system_error>

#include <sys/types.h>

/// Who may do what with files: carried from one open file to another, both by the system's numbers. What a system or
/// file system does not know or does not allow is passed over, and then the rights become narrower, never wider. Every
/// function may be called from any thread.
namespace spurkiste::dateien {

/// Everybody's right to read and write; nobody's to execute.
constexpr mode_t kLesenUndSchreiben = 0666;

/// Gives the file the owner and the group of another file or folder, or the group alone where only root could give it
/// to another owner. Whether it has that group now.
bool uebernimmEigentuemer(int von, int nach);

/// Gives the file, so far its owner's alone (0600), the owner, the group, the access list (POSIX ACL) and the
/// permissions of another file or folder, of the permissions at most `hoechstens`. Set-user-ID and set-group-ID are
/// never carried along: they were given to other bytes. Returns an error when somebody may do more with it than with
/// the other one, or when that is not known, and why: only where permissions cannot be set, or seen.
std::error_code uebernimmRechte(int von, int nach, mode_t hoechstens);

/// Gives the file the other one's extended attributes of the user's own kind (user.*). It must still be writable.
void uebernimmMerkmale(int von, int nach);

/// The permissions of a copy of the file that is nobody's secret: those of the file to read and write, less the umask,
/// and its owner's. Where an access list says more than permissions can, nobody gets more than everybody.
[[nodiscard]] mode_t rechteEinerKopie(int von);

/// Gives a new file of the program's own (0600) the rights that the folder means: it stays its owner's alone where only
/// the folder's owner may write, and belongs to that one if possible; else it gets the folder's rights to read and
/// write.
void gibRechteDesOrdners(const std::string& ordner, int nach);

/// Makes a file that is older than that rule, or than the folder's rights, its owner's alone where the rule says so.
void verschliesseWieOrdner(const std::string& ordner, int nummer);

}  // namespace spurkiste::dateien
