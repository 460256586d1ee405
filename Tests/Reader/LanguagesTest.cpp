#include "Reader/Languages.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace Nimbrel::Reader {
namespace {

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(Languages, OneWithoutAModelIsPassedOver) {
  EXPECT_EQ(installedLanguages({"xyz", "eng"}), "eng");
  EXPECT_EQ(installedLanguages({"eng", "xyz"}), "eng");
}

TEST(Languages, WithoutAnyOfThoseWantedThereIsAnother) {
  for (const auto& wanted : {std::vector<std::string>{}, {"xyz"}, {""}}) {
    const auto languages = installedLanguages(wanted);
    EXPECT_THAT(languages, Not(IsEmpty()));
    EXPECT_THAT(languages, Not(HasSubstr("+")));
  }
}

TEST(Languages, ModelsOfNoLanguageAreNone) {
  EXPECT_THAT(installedLanguages({"osd", "equ", "script/Latin"}),
              Not(AnyOf(HasSubstr("osd"), HasSubstr("equ"), HasSubstr("/"))));
  EXPECT_EQ(installedLanguages({"osd", "eng"}), "eng");
}

TEST(Languages, TheModelsThatThereAreComeInOrderAndWithoutThoseOfNoLanguage) {
  const auto models = installedModels();
  EXPECT_THAT(models, Contains("eng"));
  EXPECT_THAT(models, Not(Contains("osd")));
  EXPECT_TRUE(std::ranges::is_sorted(models));
}

}  // namespace
}  // namespace Nimbrel::Reader
