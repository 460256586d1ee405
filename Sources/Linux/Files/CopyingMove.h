#pragma once

#include <string>

namespace Nimbrel {

/// Moves a file or a link to another file system, as FileMove::move() promises. Returns 0, or the error number.
[[nodiscard]] int moveByCopying(const std::string& from, const std::string& to);

}  // namespace Nimbrel
