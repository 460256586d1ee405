#include "Reader/Languages.h"

#include <tesseract/baseapi.h>

#include <algorithm>
#include <array>

namespace Nimbrel::Reader {

namespace {

/// Models that know the direction of a page and formulas, but no language.
constexpr std::array noLanguages{"osd", "equ"};

}  // namespace

std::vector<std::string> installedModels() {
  tesseract::TessBaseAPI api;
  // Where the models lie is known only once one was asked for, be it in vain.
  api.Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY);
  std::vector<std::string> names;
  api.GetAvailableLanguagesAsVector(&names);
  std::erase_if(names, [](const auto& name) {
    // Those in a folder of their own are for a script, whatever the language.
    return std::ranges::find(noLanguages, name) != noLanguages.end() || name.find('/') != std::string::npos;
  });
  std::ranges::sort(names);
  return names;
}

std::string installedLanguages(const std::vector<std::string>& wanted) {
  const auto installed = installedModels();
  std::string languages;
  for (const auto& language : wanted) {
    if (!std::ranges::binary_search(installed, language)) continue;
    languages += (languages.empty() ? "" : "+") + language;
  }
  return languages.empty() && !installed.empty() ? installed.front() : languages;
}

}  // namespace Nimbrel::Reader
