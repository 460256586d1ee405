#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// The pieces of the freedesktop.org "Startup Notification" protocol that are needed to end one. Pure, any thread.
namespace StartupNotice {

/// When the user asked for the start, in milliseconds of the X server, as it stands at the end of an identifier; 0 when
/// it does not.
[[nodiscard]] std::uint32_t timeOf(std::string_view identifier);

/// What is broadcast to say that the start has come to its end: messages of 20 bytes, the last with a zero.
[[nodiscard]] std::vector<std::array<std::uint8_t, 20>> removal(std::string_view identifier);

}  // namespace StartupNotice

}  // namespace Nimbrel
