#pragma once

#include <cstdint>
#include <string>

/// File systems whose changes may be made on another machine, of which this one's kernel then sends no events.
namespace Nimbrel::NetworkFileSystem {

/// Whether the type number of a file system, as statfs gives it, is that of such a one.
[[nodiscard]] bool isType(std::uint32_t type);

/// Whether the folder lies on such a one; no when that cannot be found out.
[[nodiscard]] bool holds(const std::string& path);

}  // namespace Nimbrel::NetworkFileSystem
