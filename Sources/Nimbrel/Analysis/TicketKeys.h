#pragma once

#include <string_view>

namespace Nimbrel {

inline constexpr std::u16string_view ticketKeyExpression = uR"((?i)\b[A-Z]{2,8}-\d{1,7}\b)";

/// Whether a text in lower case holds the key of a ticket, such as "web-1204". Pure, any thread.
[[nodiscard]] bool holdsTicketKey(std::string_view lowered);

}  // namespace Nimbrel
