#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// The tags of a shot, in stored order.
using Tags = std::vector<std::string>;

/// The names, be they tags or projects, and behind them those of `more` that they lack.
[[nodiscard]] std::vector<std::string> withAll(std::vector<std::string> names, const std::vector<std::string>& more);

/// The tags but those that are exactly this one.
[[nodiscard]] Tags withoutTag(Tags tags, std::string_view tag);

/// The text with a blank for each comma. A comma is what separates tags in the catalogue: a tag that held one would be
/// read back as two, be missed, and be added again for ever.
[[nodiscard]] std::string withoutCommas(std::string_view text);

/// The tag that puts a shot into a project.
[[nodiscard]] std::string projectTag(std::string_view project);

}  // namespace Nimbrel
