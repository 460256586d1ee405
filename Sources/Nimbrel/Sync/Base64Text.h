#pragma once

#include <string_view>

namespace Nimbrel {

/// Whether a text is base64 as Base64::decode() takes it: whole groups of four letters of the standard alphabet,
/// padding at the very end alone. Far quicker than to decode it, since of most vault files no more is asked.
[[nodiscard]] bool isBase64(std::string_view text);

}  // namespace Nimbrel
