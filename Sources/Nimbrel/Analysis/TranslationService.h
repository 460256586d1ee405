#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Where recognised text is translated. Any thread, no state.
namespace Nimbrel::TranslationService {

/// The address of the service that this program was built with (NIMBREL_TRANSLATION_SERVICE_URL), without a slash at
/// its end.
[[nodiscard]] std::string_view baseUrl();

/// What opens a translation into English, from whatever language it is: the base, the path "/" and the query items
/// "sl", "tl", "text" and "op", the text cut to its first 5000 characters. Absent when the base is no address of a
/// server.
[[nodiscard]] std::optional<std::string> translationUrl(std::string_view base, std::string_view text);

}  // namespace Nimbrel::TranslationService
