#pragma once

#include <string>
#include <string_view>

/// Where postal addresses are looked up.
namespace Nimbrel::MapService {

/// The address of the service that this program was built with (NIMBREL_MAP_SERVICE_URL), without a slash at its end.
[[nodiscard]] std::string_view baseUrl();

/// What opens a search for the text: the base, the path "/" and the text as the one query item "q".
[[nodiscard]] std::string searchUrl(std::string_view base, std::string_view text);

}  // namespace Nimbrel::MapService
