#include "Linux/Reading/ReadingLanguages.h"

#include "Support/EnvironmentVariable.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::EnvironmentVariable;

TEST(ReadingLanguages, AreThatOfTheUserAndEnglish) {
  const EnvironmentVariable none("LC_ALL", std::nullopt);
  const EnvironmentVariable language("LANG", "fr_FR.UTF-8");
  EXPECT_THAT(readingLanguages(), ElementsAre("fra", "eng"));
  const EnvironmentVariable messages("LC_MESSAGES", "de_AT.UTF-8@euro");
  EXPECT_THAT(readingLanguages(), ElementsAre("deu", "eng"));
  const EnvironmentVariable all("LC_ALL", "pt_BR");
  EXPECT_THAT(readingLanguages(), ElementsAre("por", "eng"));
}

TEST(ReadingLanguages, AreEnglishAloneWhereNothingElseIsSet) {
  for (const auto* locale : {"C", "POSIX", "C.UTF-8", "en_GB.UTF-8"}) {
    const EnvironmentVariable all("LC_ALL", locale);
    EXPECT_THAT(readingLanguages(), ElementsAre("eng")) << locale;
  }
}

TEST(ReadingLanguages, GoByTheNamesOfTheModels) {
  struct Case {
    const char* locale;
    const char* model;
  };
  for (const auto& [locale, model] :
       {Case{"zh_CN.UTF-8", "chi_sim"}, Case{"zh_TW.UTF-8", "chi_tra"}, Case{"zh_HK", "chi_tra"}, Case{"nb_NO", "nor"},
        Case{"sr_RS", "srp"}, Case{"sr_RS@latin", "srp"}, Case{"ja_JP", "jpn"}, Case{"cs_CZ", "ces"}}) {
    const EnvironmentVariable all("LC_ALL", locale);
    EXPECT_THAT(readingLanguages(), ElementsAre(model, "eng")) << locale;
  }
}

}  // namespace
}  // namespace Nimbrel
