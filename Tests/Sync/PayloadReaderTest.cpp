#include "Sync/PayloadReader.h"

#include "Sync/Base64Text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel {
namespace {

std::optional<std::string> text(std::string json) {
  PayloadReader reader(json);
  const auto string = reader.string();
  return string && reader.isAtEnd() ? std::optional<std::string>(*string) : std::nullopt;
}

std::optional<double> number(std::string json) {
  PayloadReader reader(json);
  const auto value = reader.number();
  return reader.isAtEnd() ? value : std::nullopt;
}

bool isJson(std::string json) {
  PayloadReader reader(json);
  return reader.skip() && reader.isAtEnd();
}

TEST(PayloadReader, ReadsTexts) {
  EXPECT_EQ(text(R"("")"), "");
  EXPECT_EQ(text(R"( "plain" )"), "plain");
  EXPECT_EQ(text("\"\xc3\xa4 \x7f\""), "\xc3\xa4 \x7f");
}

TEST(PayloadReader, ReadsEscapes) {
  EXPECT_EQ(text(R"("\"\\\/\b\f\n\r\t")"), "\"\\/\b\f\n\r\t");
  EXPECT_EQ(text(R"("a\"b\"c")"), "a\"b\"c");
  EXPECT_EQ(text(R"("\u0041\u00e4\u20AC\ud83d\ude00")"), "A\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80");
  EXPECT_EQ(text(R"("\u0000")"), std::string(1, '\0'));
  EXPECT_EQ(text(R"("\\")"), "\\");
  EXPECT_EQ(text(R"("ends with a quote\"")"), "ends with a quote\"");
}

TEST(PayloadReader, BrokenTextsAreNone) {
  for (const char* json : {R"(")",
                           R"("a)",
                           R"(a")",
                           R"("\")",
                           R"("\x")",
                           R"("\u12")",
                           R"("\u12g4")",
                           R"("\u+123")",
                           R"("\ud83d")",
                           R"("\ud83dx")",
                           R"("\ud83d\n")",
                           R"("\ude00")",
                           R"("\ud83d\u0041")",
                           R"("\u)",
                           R"("\)",
                           "\"line\nbreak\"",
                           "\"esc\\n\ttab\"",
                           "\"\x80\"",
                           "\"\xff\\n\"",
                           "\"\xed\xa0\x80\"",
                           "\"\xc0\xaf\"",
                           "'a'",
                           "1",
                           "null",
                           ""}) {
    EXPECT_EQ(text(json), std::nullopt) << json;
  }
}

std::optional<std::string> plainBase64(std::string json) {
  PayloadReader reader(json);
  const auto string = reader.plainBase64();
  return string && reader.isAtEnd() ? std::optional<std::string>(*string) : std::nullopt;
}

TEST(PayloadReader, ReadsBase64) {
  EXPECT_EQ(plainBase64(R"( "aGk+" )"), "aGk+");
  EXPECT_EQ(plainBase64(R"("")"), "");
}

TEST(PayloadReader, OfWhatIsNoPlainBase64NothingIsTaken) {
  for (const std::string json : {R"("aGk")", R"("aG k")", R"("aGk\/")", R"("aGk\"")", "7", "\"aGk=", ""}) {
    EXPECT_EQ(plainBase64(json), std::nullopt) << json;
  }
  std::string json = R"( "a\/bc")";
  PayloadReader reader(json);
  EXPECT_EQ(reader.plainBase64(), std::nullopt);
  EXPECT_EQ(reader.string(), "a/bc");
}

TEST(PayloadReader, ReadsNumbers) {
  EXPECT_EQ(number("0"), 0.0);
  EXPECT_EQ(number("-0"), 0.0);
  EXPECT_EQ(number("12.5e+1"), 125.0);
  EXPECT_EQ(number("1E-2"), 0.01);
  EXPECT_EQ(number("721692800.12345678"), 721692800.12345678);
  EXPECT_EQ(number("1" + std::string(300, '0')), 1e300);
  EXPECT_EQ(number("0." + std::string(100'000, '0') + "1e100001"), 1.0);
}

TEST(PayloadReader, BrokenAndTooLargeNumbersAreNone) {
  for (const char* json : {"",     "-",     "+1",     "01",  "00",  ".5",       "1.",  "1.e1", "1e",    "1e+",
                           "0x10", "1e999", "-1e999", "NaN", "nan", "Infinity", "inf", "1,5",  "\"1\"", "true"}) {
    EXPECT_EQ(number(json), std::nullopt) << json;
  }
}

TEST(PayloadReader, SkipsValuesOfEveryKind) {
  for (const char* json : {"null", "true", "false", "0", "-1.5e9999", "\"a\"", "[]", "{}", "[1, [2, {}], \"]\"]",
                           R"({"a":{"b":[1,2]},"c":"}"})", " [ ] ", "{ }"}) {
    EXPECT_TRUE(isJson(json)) << json;
  }
}

TEST(PayloadReader, WhatIsNoJsonIsNotSkipped) {
  for (const char* json : {"",         " ",  "nul", "TRUE",  "[",        "]",         "[1,]",        "[,1]",
                           "[1 2]",    "{",  "}",   "{a:1}", R"({"a"})", R"({"a":})", R"({"a":1,})", R"({"a":1 "b":2})",
                           R"({1:2})", "[}", "1 2", "/* */1"}) {
    EXPECT_FALSE(isJson(json)) << json;
  }
}

TEST(PayloadReader, NestingIsLimited) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
  EXPECT_TRUE(isJson(nested(512)));
  EXPECT_FALSE(isJson(nested(513)));
  EXPECT_FALSE(isJson(nested(10'000'000)));
  std::string objects;
  for (int i = 0; i < 1'000'000; ++i) objects += R"({"a":)";
  EXPECT_FALSE(isJson(objects));
}

TEST(PayloadReader, ListsSideBySideAreNotNested) {
  std::string json = "[[]";
  for (int i = 0; i < 2000; ++i) json += ",[{}]";
  EXPECT_TRUE(isJson(json + "]"));
}

TEST(Base64Text, IsWholeGroupsOfTheAlphabetWithPaddingAtTheEnd) {
  for (const char* good : {"", "AAAA", "azAZ09+/", "AA==", "AAA=", "AAAAAA=="}) EXPECT_TRUE(isBase64(good)) << good;
  for (const char* bad : {"A",    "AA",   "AAA",  "AAAAA", "A===", "====", "=AAA", "AA=A", "AA==AAAA", "AA A", "AA\nA",
                          "AAA-", "AAA_", "AAA.", "AAA:",  "AAA@", "AAA[", "AAA`", "AAA{", "AAA\xc3",  "AAA,"}) {
    EXPECT_FALSE(isBase64(bad)) << bad;
  }
}

TEST(Base64Text, EveryByteAndEveryPlaceIsLookedAt) {
  constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (int byte = 0; byte < 256; ++byte) {
    const auto c = static_cast<char>(byte);
    EXPECT_EQ(isBase64(std::string(4, c)), alphabet.find(c) != std::string_view::npos) << byte;
  }
  for (std::size_t place = 0; place < 400; ++place) {
    std::string text(400, 'A');
    text[place] = '!';
    EXPECT_FALSE(isBase64(text)) << place;
  }
}

}  // namespace
}  // namespace Nimbrel
