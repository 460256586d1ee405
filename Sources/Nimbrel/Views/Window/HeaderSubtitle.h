#pragma once

#include "Store/Store.h"

#include <string>

namespace Nimbrel {

/// The line beside the title of what is shown: "11 shots · 9.8 MB · reading text… 3 left · Copied image". What there is
/// nothing to say about is left out, but for the number of shots. Main thread.
[[nodiscard]] std::string headerSubtitle(const Store& store);

}  // namespace Nimbrel
