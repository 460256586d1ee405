#pragma once

#include <string>

namespace Nimbrel {

/// What an error number of the system means to somebody who wanted to move a file, in plain English.
[[nodiscard]] std::string wordsFor(int error);

}  // namespace Nimbrel
