#include "Linux/Reading/ReadingLanguages.h"

#include "Foundation/UserLocale.h"

#include <array>
#include <string_view>

namespace Nimbrel {

namespace {

/// Where the name of the model is not the three letters of ISO 639-2.
struct Exception {
  std::string_view language;
  std::string_view script;  ///< empty for any
  const char* model;
};

constexpr std::array exceptions{
    Exception{"ku", "Latn", "kmr"},      Exception{"nb", "", "nor"},          Exception{"nn", "", "nor"},
    Exception{"sr", "Latn", "srp_latn"}, Exception{"uz", "Cyrl", "uzb_cyrl"}, Exception{"zh", "Hans", "chi_sim"},
    Exception{"zh", "Hant", "chi_tra"},
};

std::string modelFor(icu::Locale locale) {
  UErrorCode error = U_ZERO_ERROR;
  locale.addLikelySubtags(error);
  for (const auto& exception : exceptions) {
    const bool isScript = exception.script.empty() || exception.script == locale.getScript();
    if (exception.language == locale.getLanguage() && isScript) return exception.model;
  }
  return locale.getISO3Language();
}

}  // namespace

std::vector<std::string> readingLanguages() {
  const std::string english = "eng";
  const auto own = modelFor(UserLocale::forMessages());
  return own.empty() || own == english ? std::vector{english} : std::vector{own, english};
}

}  // namespace Nimbrel
