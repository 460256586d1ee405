#include "Editing/MarksFile.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

using Kind = Annotation::Kind;

std::vector<Annotation> marks(std::string_view json) {
  const auto result = marksFromJSON(json);
  EXPECT_TRUE(result) << result.error().message;
  return result ? result.value() : std::vector<Annotation>();
}

std::string errorOf(std::string_view json) {
  const auto result = marksFromJSON(json);
  EXPECT_FALSE(result) << json;
  return result ? std::string() : result.error().message;
}

TEST(MarksFile, HasAllFieldsOfAMark) {
  const auto list = marks(R"([{"kind": "label", "start": [0.25, 0.5], "end": [1, -2e-1], "colorIndex": 3,
                               "number": -7, "text": "Grüße 🎉"}])");
  ASSERT_EQ(list.size(), 1U);
  const auto& mark = list.front();
  EXPECT_EQ(mark.kind, Kind::label);
  EXPECT_EQ(mark.start, QPointF(0.25, 0.5));
  EXPECT_EQ(mark.end, QPointF(1, -0.2));
  EXPECT_EQ(mark.colorIndex, 3);
  EXPECT_EQ(mark.number, -7);
  EXPECT_EQ(mark.text, "Grüße 🎉");
}

TEST(MarksFile, KeepsTheOrderAndGivesEachMarkAnIdOfItsOwn) {
  const auto list = marks(R"([{"kind": "redact", "start": [0, 0], "end": [1, 1]},
                              {"kind": "blur", "start": [0, 0], "end": [1, 1]},
                              {"kind": "redact", "start": [0, 0], "end": [1, 1]}])");
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list[0].kind, Kind::redact);
  EXPECT_EQ(list[1].kind, Kind::blur);
  EXPECT_EQ(list[2].kind, Kind::redact);
  EXPECT_FALSE(list[0].id.isNull());
  EXPECT_NE(list[0].id, list[2].id);
}

TEST(MarksFile, KnowsEveryKind) {
  for (const auto kind : allAnnotationKinds) {
    const auto list = marks(R"([{"kind": ")" + std::string(rawValue(kind)) + R"(", "start": [0, 0], "end": [1, 1]}])");
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.front().kind, kind);
  }
}

TEST(MarksFile, AnEmptyListHasNoMarks) { EXPECT_TRUE(marks(" [ ] ").empty()); }

TEST(MarksFile, WhatIsLeftOutIsZeroOrEmpty) {
  const auto list = marks(R"([{"kind": "box", "start": [0, 0], "end": [1, 1], "comment": "mine"}])");
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list.front().colorIndex, 0);
  EXPECT_EQ(list.front().number, 0);
  EXPECT_EQ(list.front().text, "");
}

TEST(MarksFile, AStepOrALabelEndsWhereItStarts) {
  const auto list = marks(R"([{"kind": "step", "start": [0.5, 0.25]}, {"kind": "label", "start": [0.75, 1]}])");
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].end, QPointF(0.5, 0.25));
  EXPECT_EQ(list[1].end, QPointF(0.75, 1));
}

TEST(MarksFile, EveryOtherKindNeedsItsEnd) {
  for (const auto* kind : {"redact", "blur", "box", "arrow", "highlight", "crop"}) {
    EXPECT_EQ(errorOf(R"([{"kind": ")" + std::string(kind) + R"(", "start": [0, 0]}])"),
              "marks[0]: \"end\" must be a list of two numbers");
  }
}

TEST(MarksFile, WhatIsNoListIsRefused) {
  for (const auto* json : {"{}", R"({"kind": "box"})"}) EXPECT_EQ(errorOf(json), "the marks must be a list") << json;
  for (const auto* json : {"", "[", "[1,]", "box", "[] []", "null", "7", "[\"\xFF\"]", "[1e999]", "[NaN]"}) {
    EXPECT_THAT(errorOf(json), StartsWith("the marks are no JSON: ")) << json;
  }
}

TEST(MarksFile, CoordinatesThatNoDoubleHoldsAreRefused) {
  for (const auto& number :
       {std::string("1e309"), std::string("-1e309"), std::string(400, '9'), std::string("1e99999")}) {
    EXPECT_THAT(errorOf(R"([{"kind": "step", "start": [0, )" + number + "]}]"), StartsWith("the marks are no JSON: "));
  }
}

TEST(MarksFile, ListsInListsWithoutEndAreRefused) {
  EXPECT_THAT(errorOf(std::string(1'000'000, '[')), StartsWith("the marks are no JSON: "));
}

TEST(MarksFile, TheErrorNamesTheMarkByItsIndex) {
  EXPECT_EQ(errorOf(R"([{"kind": "step", "start": [0, 0]}, {"kind": "ellipse", "start": [0, 0]}])"),
            "marks[1]: \"kind\" is unknown: ellipse");
  EXPECT_EQ(errorOf(R"([{"kind": "step", "start": [0, 0]}, {"kind": "step", "start": [0, 0]}, 3])"),
            "marks[2]: must be an object");
}

TEST(MarksFile, AWrongKindIsNotRepeatedWithoutEnd) {
  EXPECT_LT(errorOf(R"([{"kind": ")" + std::string(100'000, 'x') + R"("}])").size(), 100U);
}

TEST(MarksFile, MembersOfTheWrongTypeAreRefused) {
  const auto errorWith = [](const std::string& member) {
    return errorOf(R"([{"kind": "step", "start": [0, 0], )" + member + "}]");
  };
  EXPECT_EQ(errorOf(R"([{"start": [0, 0]}])"), "marks[0]: \"kind\" must be the name of a kind");
  EXPECT_EQ(errorOf(R"([{"kind": 3, "start": [0, 0]}])"), "marks[0]: \"kind\" must be the name of a kind");
  EXPECT_EQ(errorOf(R"([{"kind": "step"}])"), "marks[0]: \"start\" must be a list of two numbers");
  for (const auto* point : {"null", "0.5", "[]", "[0]", "[0, 0, 0]", "[\"0\", 0]", "[0, null]", "[[0], 0]", "{}"}) {
    EXPECT_EQ(errorWith(R"("end": )" + std::string(point)), "marks[0]: \"end\" must be a list of two numbers") << point;
  }
  for (const auto* number : {"null", "\"1\"", "1.5", "true", "[1]"}) {
    EXPECT_EQ(errorWith(R"("number": )" + std::string(number)), "marks[0]: \"number\" must be a whole number");
    EXPECT_EQ(errorWith(R"("colorIndex": )" + std::string(number)), "marks[0]: \"colorIndex\" must be a whole number");
  }
  for (const auto* text : {"null", "7", "[\"a\"]"}) {
    EXPECT_EQ(errorWith(R"("text": )" + std::string(text)), "marks[0]: \"text\" must be a text");
  }
}

TEST(MarksFile, NumbersBeyondAnIntAreRefused) {
  const auto json = [](const std::string& number) {
    return R"([{"kind": "step", "start": [0, 0], "number": )" + number + "}]";
  };
  EXPECT_EQ(marks(json("2147483647")).front().number, 2147483647);
  EXPECT_EQ(marks(json("-2147483648")).front().number, -2147483647 - 1);
  for (const auto* number : {"2147483648", "-2147483649", "1e300", "9223372036854775808"}) {
    EXPECT_THAT(errorOf(json(number)), HasSubstr("\"number\" is out of range")) << number;
  }
}

}  // namespace
}  // namespace Nimbrel
