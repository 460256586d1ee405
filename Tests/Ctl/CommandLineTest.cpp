#include "CommandLine.h"

#include <gmock/gmock.h>

namespace Nimbrel::Ctl {
namespace {

using ::testing::ElementsAre;

const std::vector<OptionSpec> options{{"--json", ""}, {"--tolerance", "N"}};

Result<CommandLine> parse(const std::vector<std::string_view>& words) { return parseCommandLine(words, options); }

TEST(CommandLine, TellsOptionsFromArguments) {
  const auto line = parse({"a", "--json", "b", "--tolerance", "3"});
  ASSERT_TRUE(line);
  EXPECT_THAT(line.value().arguments, ElementsAre("a", "b"));
  EXPECT_TRUE(line.value().has("--json"));
  EXPECT_EQ(line.value().value("--tolerance"), "3");
}

TEST(CommandLine, TwoDashesEndTheOptions) {
  EXPECT_THAT(parse({"--", "--json", "--"}).value().arguments, ElementsAre("--json", "--"));
}

TEST(CommandLine, AValueMayStandBehindAnEqualsSign) {
  EXPECT_EQ(parse({"--tolerance=4"}).value().value("--tolerance"), "4");
}

TEST(CommandLine, AValueMayBeginWithADash) {
  EXPECT_EQ(parse({"--tolerance", "-1"}).value().value("--tolerance"), "-1");
}

TEST(CommandLine, NamesTheWordThatIsWrong) {
  EXPECT_EQ(parse({"--nonsense"}).error().message, "unknown option --nonsense");
  EXPECT_EQ(parse({"--tolerance"}).error().message, "option --tolerance needs a value");
  EXPECT_EQ(parse({"--json=1"}).error().message, "option --json takes no value");
}

TEST(Decimal, TakesWholeNumbersOnly) {
  EXPECT_EQ(decimal("12"), 12);
  EXPECT_EQ(decimal("-3"), -3);
  for (const auto* text : {"", "x", "1x", "1.5", "0x10", " 1", "99999999999999999999"}) {
    EXPECT_FALSE(decimal(text)) << text;
  }
}

TEST(DecimalFraction, TakesNumbersWithAPoint) {
  EXPECT_EQ(decimalFraction("0"), 0);
  EXPECT_EQ(decimalFraction("12.5"), 12.5);
  EXPECT_EQ(decimalFraction(".5"), 0.5);
  EXPECT_EQ(decimalFraction("-1"), -1);
}

TEST(DecimalFraction, TakesNothingElse) {
  for (const auto* text : {"", " 1", "1 ", "1s", "1,5", "+1", "1e3", "0x10", "nan", "inf", "-inf", "1.5.2", "--1"}) {
    EXPECT_EQ(decimalFraction(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace Nimbrel::Ctl
