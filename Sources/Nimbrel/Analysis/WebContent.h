#pragma once

#include "Analysis/ShotText.h"

namespace Nimbrel {

/// Whether the text is likely that of a web page: an address near the top, the words of a shop, or those that stand at
/// the foot of a site. Pure, any thread.
[[nodiscard]] bool looksLikeWebContent(const ShotText& text);

}  // namespace Nimbrel
