#include "Reader/Protocol.h"

#include <QUtf8StringView>

#include <gmock/gmock.h>

#include <algorithm>

namespace Nimbrel::Reader {
namespace {

using Wanted = PictureReader::Wanted;

TEST(ReaderProtocol, CarriesARequestWithAnyBytesInItsPath) {
  for (const auto wanted : {Wanted::Text, Wanted::Codes, Wanted::TextAndCodes}) {
    const Request request{"/home/\xFF\xFE \n\"\xC3\xA4.png", wanted, {"deu", "eng"}};
    const auto line = encoded(request);
    EXPECT_EQ(line.find('\n'), std::string::npos);
    EXPECT_EQ(decodedRequest(line), request);
  }
}

TEST(ReaderProtocol, CarriesAReading) {
  const PictureReading reading{{{"Größe: 3 €", {.125, .25, .5, .0625}}, {"", {}}}, {"a\nb", "a\nb", ""}};
  const auto line = encoded(Answer{reading});
  EXPECT_EQ(line.find('\n'), std::string::npos);
  EXPECT_EQ(decodedAnswer(line), Answer{reading});
}

TEST(ReaderProtocol, CarriesControlCharacters) {
  std::string text =
      "\x7F\xC2\x80\xE2\x80\xA8\xEF\xBF\xBF";  // the last of ASCII, the next one, an end of line, no character
  for (char character = 0; character < 0x20; ++character) text += character;
  const PictureReading reading{{{text, {}}}, {text}};
  const auto line = encoded(Answer{reading});
  EXPECT_TRUE(std::ranges::none_of(line, [](unsigned char byte) { return byte < 0x20; }));
  EXPECT_EQ(decodedAnswer(line), Answer{reading});
}

TEST(ReaderProtocol, CarriesWhatIsNoTextAsReplacementCharacters) {
  const std::string replacement = "\xEF\xBF\xBD";
  for (const std::string broken : {"\xED\xA0\x80", "\xED\xB0\x80", "\xFF", "\xC3", "\xF4\x90\x80\x80"}) {
    const auto text = "a" + broken + "b";
    const auto answer = decodedAnswer(encoded(Answer{PictureReading{{{text, {}}}, {text}}}));
    ASSERT_TRUE(answer && answer->reading);
    for (const auto& carried : {answer->reading->blocks.at(0).text, answer->reading->codes.at(0)}) {
      EXPECT_TRUE(carried.starts_with("a" + replacement) && carried.ends_with(replacement + "b")) << carried;
      EXPECT_TRUE(QUtf8StringView(carried).isValidUtf8());
    }
  }
}

TEST(ReaderProtocol, TakesNoHalfOfACharacterFromALine) {
  const auto answer = decodedAnswer(R"({"blocks":[["a\ud800b",0,0,1,1]],"codes":["a\udc00b"]})");
  ASSERT_TRUE(answer && answer->reading);
  EXPECT_TRUE(QUtf8StringView(answer->reading->blocks.at(0).text).isValidUtf8());
  EXPECT_TRUE(QUtf8StringView(answer->reading->codes.at(0)).isValidUtf8());
}

TEST(ReaderProtocol, CarriesThatNothingCanReadText) { EXPECT_EQ(decodedAnswer(encoded(Answer{})), Answer{}); }

TEST(ReaderProtocol, TakesNoOtherLineForAMessage) {
  for (const auto* line :
       {"", "x", "{", "[]", "{}", R"({"path":"","wanted":"text"})", R"({"path":"YQ==","wanted":"x"})",
        R"({"path":"*","wanted":"text"})", R"({"blocks":1,"codes":[]})", R"({"ready":true})", R"({"begun":true})"}) {
    EXPECT_FALSE(decodedRequest(line)) << line;
    EXPECT_FALSE(decodedAnswer(line)) << line;
  }
}

}  // namespace
}  // namespace Nimbrel::Reader
