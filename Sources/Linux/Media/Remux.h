#pragma once

#include "Foundation/Result.h"

#include <optional>
#include <string>

namespace Nimbrel::Media {

/// Writes what a movie consists of, as it was encoded, into a file with its index in front, in place of what stands at
/// `to`.
[[nodiscard]] std::optional<Error> remux(const std::string& from, const std::string& to);

}  // namespace Nimbrel::Media
