#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What file managers hand over when files are dropped. Any thread.
namespace spurkiste::uriliste {

/// The absolute paths of the local files in a list of addresses (text/uri-list, RFC 2483), in their order, as the
/// system's own bytes. Read are file: addresses without host or of the host "localhost" (RFC 8089), percent-encoded or
/// not; comments, other schemes and hosts, and what is no path, are passed over.
[[nodiscard]] std::vector<std::string> pfade(std::string_view liste);

}  // namespace spurkiste::uriliste
