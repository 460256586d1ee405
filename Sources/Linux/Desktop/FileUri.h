#pragma once

#include <string>

namespace Nimbrel {

/// The address of a file. Escapes what an address cannot hold, byte by byte: names need not be valid UTF-8. Empty for a
/// path that is not absolute. Any thread.
[[nodiscard]] std::string fileUri(const std::string& path);

}  // namespace Nimbrel
