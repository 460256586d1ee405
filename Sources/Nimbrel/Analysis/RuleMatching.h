#pragma once

#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <string_view>

namespace Nimbrel {

/// Whether a rule applies to a shot whose source has the given title, empty when it is no application. A rule that is
/// switched off or has no condition applies to none. Pure, any thread.
[[nodiscard]] bool matches(const AutomationRule& rule, const Shot& shot, std::string_view sourceTitle);

}  // namespace Nimbrel
