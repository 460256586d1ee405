#pragma once

#include "Foundation/Timestamp.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// Something in a text that a person would want to act on.
struct DetectedItem {
  enum class Kind { link, email, phone, address, date };

  Kind kind = Kind::link;
  std::string text;                ///< to show and to copy
  std::optional<std::string> url;  ///< what opens it
  std::optional<Timestamp> date;   ///< of a date, the instant that was understood

  /// Kind and text with a bar between: what tells one item from another.
  [[nodiscard]] std::string id() const;

  bool operator==(const DetectedItem&) const = default;
};

/// "Link", "Email", "Phone", "Address", "Date".
[[nodiscard]] std::string_view rawValue(DetectedItem::Kind kind);

/// Finds links, e-mail addresses, phone numbers, postal addresses and dates in a text. Any thread.
namespace Detected {

/// The items of the text (UTF-8) in the order in which they stand there, none twice, and none within another: a link
/// with its scheme wins over all that it holds, an e-mail address over its host, an address over the numbers and dates
/// in it, a date over a phone number. `now` is what "tomorrow" is
/// counted from; dates without a zone are in the user's, numbers without a country code in the user's region.
[[nodiscard]] std::vector<DetectedItem> items(std::string_view text, Timestamp now);

}  // namespace Detected

}  // namespace Nimbrel
