#pragma once

#include <string>

namespace Nimbrel {

/// The address of a file. Escapes what an address cannot hold, byte by byte: names need not be valid UTF-8. Empty for a
/// path that is not absolute. Any thread.
[[nodiscard]] std::string fileUri(const std::string& path);

/// The same the other way round. Empty for an address that is no file's, or one of another machine. Any thread.
[[nodiscard]] std::string fileOfUri(const std::string& uri);

}  // namespace Nimbrel
