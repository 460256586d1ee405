#pragma once

#include <string>
#include <vector>

namespace Nimbrel::Reader {

/// The languages that Tesseract has a model for on this machine, in the order of their names. Takes a tenth of a
/// second.
[[nodiscard]] std::vector<std::string> installedModels();

/// Those of the languages that Tesseract has a model for on this machine, joined as it wants them ("deu+eng"); without
/// any of them, the first model of a language that there is. Empty without a model. Takes a tenth of a second.
[[nodiscard]] std::string installedLanguages(const std::vector<std::string>& wanted);

}  // namespace Nimbrel::Reader
