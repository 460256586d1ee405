#pragma once

#include "Model/Filter.h"
#include "Store/DerivedState.h"

#include <optional>
#include <string_view>

namespace Nimbrel::Ctl {

/// A filter in the form of the command line: "inbox", "tag:NAME", "stack:app:safari". Absent when it is none. The title
/// of a group or a stack is taken from those at hand.
[[nodiscard]] std::optional<Filter> parseFilter(std::string_view text, const DerivedState& derived);

}  // namespace Nimbrel::Ctl
