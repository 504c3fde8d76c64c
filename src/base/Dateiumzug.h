#pragma once

#include <string>

/// Moving files so that nothing is ever overwritten, not even what appears between a test and the deed. Paths as in
/// base/Dateien. Every function may be called from any thread.
namespace spurkiste::dateien {

/// Gives the file another path on the same file system. A symbolic link is moved itself, not what it leads to. Where
/// letter case makes no difference to the file system, a name may change into itself in other letters.
/// Throws std::system_error; the file then has its old path and no other. EEXIST: something, of whatever kind, a
/// dangling link included, is at the new path.
void verschiebe(const std::string& alt, const std::string& neu);

}  // namespace spurkiste::dateien
