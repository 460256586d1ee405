#pragma once

#include "Analysis/ContentGrouping.h"
#include "Analysis/Detected.h"
#include "Model/Models.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

// What the inspector says about one shot, in words. Pure functions, any thread.

/// "Looks like it contains email, phone"; for shots in which something sensitive was found.
[[nodiscard]] std::string sensitiveWarning(const Shot& shot);

/// The visible source, or that there is none.
[[nodiscard]] std::string sourceTitle(const ContentGroup& group);

/// "1520 × 960 · 412 KB", without the part that is not known.
[[nodiscard]] std::string sizeText(const Shot& shot);

/// "Library" or "Inbox".
[[nodiscard]] std::string_view placeText(const Shot& shot);

/// The first items of a text, as many as have room.
[[nodiscard]] std::vector<DetectedItem> foundItems(std::string_view text, Timestamp now);

/// The name of an item's icon.
[[nodiscard]] std::string_view symbol(DetectedItem::Kind kind);

/// What a code opens, when it is an address with a scheme.
[[nodiscard]] std::optional<std::string> addressIn(const std::string& code);

}  // namespace Nimbrel
