#include "Store/LibraryName.h"

#include "Foundation/Text.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

constexpr double secondOfMarch2026 = 1'772'452'800;

std::optional<std::string> nameOf(std::string_view application, std::string_view title,
                                  std::string_view extension = "png") {
  return libraryName({application, title, timestamp(secondOfMarch2026), extension});
}

std::string repeated(std::string_view text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

TEST(LibraryName, IsApplicationTitleDateAndExtension) {
  EXPECT_EQ(nameOf("Safari", "Invoice for March"), "Safari — Invoice for March — 2026-03-02.png");
}

TEST(LibraryName, LeavesOutWhatThereIsNot) {
  EXPECT_EQ(nameOf("Safari", ""), "Safari — 2026-03-02.png");
  EXPECT_EQ(nameOf("", "Invoice", "heic"), "Invoice — 2026-03-02.heic");
}

TEST(LibraryName, TheDateAloneMakesNoName) {
  EXPECT_EQ(nameOf("", ""), std::nullopt);
  EXPECT_EQ(nameOf("", " ?/ "), std::nullopt);
}

TEST(LibraryName, EachForbiddenCharacterBecomesABlank) {
  EXPECT_EQ(nameOf("", "a/b\\c:d*e?f\"g<h>i|j"), "a b c d e f g h i j — 2026-03-02.png");
  EXPECT_EQ(nameOf("", "a//b"), "a  b — 2026-03-02.png");
  EXPECT_EQ(nameOf("", "?really?"), "really — 2026-03-02.png");
}

TEST(LibraryName, ControlCharactersBecomeBlanks) {
  EXPECT_EQ(nameOf("", std::string_view("a\0b\x1B"
                                        "c\td",
                                        7)),
            "a b c d — 2026-03-02.png");
}

TEST(LibraryName, ATitleOf44CharactersStaysWhole) {
  EXPECT_EQ(nameOf("", std::string(44, 'x')), std::string(44, 'x') + " — 2026-03-02.png");
}

TEST(LibraryName, ATitleOf45CharactersIsCutTo44) {
  EXPECT_EQ(nameOf("", std::string(44, 'x') + "y"), std::string(44, 'x') + " — 2026-03-02.png");
}

TEST(LibraryName, ATitleOf60CharactersIsCutTo44) {
  EXPECT_EQ(nameOf("", std::string(60, 'x')), std::string(44, 'x') + " — 2026-03-02.png");
}

TEST(LibraryName, BlanksAtTheCutAreTrimmed) {
  EXPECT_EQ(nameOf("", std::string(42, 'x') + " \tyyy"), std::string(42, 'x') + " — 2026-03-02.png");
}

TEST(LibraryName, CharactersAreThoseThatAReaderCounts) {
  EXPECT_EQ(nameOf("", repeated("e\u0301", 45)), repeated("e\u0301", 44) + " — 2026-03-02.png");
  EXPECT_EQ(nameOf("", repeated("ä", 44)), repeated("ä", 44) + " — 2026-03-02.png");
}

TEST(LibraryName, IsNeverLongerThanANameCanBe) {
  const std::string_view family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
  const auto name = nameOf("Safari", repeated(family, 44));
  ASSERT_TRUE(name.has_value());
  EXPECT_LE(name->size(), 255U);
  EXPECT_EQ(*name, "Safari — " + repeated(family, 12) + " — 2026-03-02.png");
  const auto ofLongApplication = nameOf(std::string(400, 'x'), "title");
  ASSERT_TRUE(ofLongApplication.has_value());
  EXPECT_EQ(ofLongApplication->size(), 255U);
}

TEST(LibraryName, AnOverlongCharacterIsCutBetweenItsCodePoints) {
  const auto name = nameOf("", "e" + repeated("\u0301", 300));
  ASSERT_TRUE(name.has_value());
  EXPECT_EQ(*name, "e" + repeated("\u0301", 117) + " — 2026-03-02.png");
}

TEST(LibraryName, IsNeverHidden) {
  EXPECT_EQ(nameOf("", ".gitignore"), "gitignore — 2026-03-02.png");
  EXPECT_EQ(nameOf(".NET", "Console"), "NET — Console — 2026-03-02.png");
  EXPECT_EQ(nameOf("Code", ".gitignore"), "Code — .gitignore — 2026-03-02.png");
  EXPECT_EQ(nameOf("...", "Console"), "Console — 2026-03-02.png");
  EXPECT_EQ(nameOf("", "....."), std::nullopt);
}

TEST(LibraryName, NoFolderArisesFromAnApplication) {
  EXPECT_EQ(nameOf("AC/DC: Player", ""), "AC DC: Player — 2026-03-02.png");
}

TEST(LibraryName, AnExtensionThatLeavesNoRoomMakesNoName) {
  EXPECT_EQ(nameOf("Safari", "", std::string(250, 'x')), std::nullopt);
}

}  // namespace
}  // namespace Nimbrel
