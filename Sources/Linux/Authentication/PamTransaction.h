#pragma once

#include "Linux/Authentication/Conversation.h"

#include <string>

namespace Nimbrel {

/// Whether the service of that name lets the user in, going by what the conversation answers. Blocks until that is
/// known; any thread, several at once.
[[nodiscard]] bool authenticate(const std::string& service, const std::string& user, Conversation& conversation);

}  // namespace Nimbrel
