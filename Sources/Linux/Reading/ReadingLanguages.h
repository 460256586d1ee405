#pragma once

#include <string>
#include <vector>

namespace Nimbrel {

/// The languages that the user's screenshots are likely to be in, the most likely first, by the names of Tesseract's
/// models: that of the locale for messages and English. Whether there is a model is not looked at.
[[nodiscard]] std::vector<std::string> readingLanguages();

}  // namespace Nimbrel
