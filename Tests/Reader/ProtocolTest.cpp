#include "Reader/Protocol.h"

#include <gmock/gmock.h>

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

TEST(ReaderProtocol, CarriesThatNothingCanReadText) { EXPECT_EQ(decodedAnswer(encoded(Answer{})), Answer{}); }

TEST(ReaderProtocol, TakesNoOtherLineForAMessage) {
  for (const auto* line :
       {"", "x", "{", "[]", "{}", R"({"path":"","wanted":"text"})", R"({"path":"YQ==","wanted":"x"})",
        R"({"path":"*","wanted":"text"})", R"({"blocks":1,"codes":[]})", R"({"ready":true})"}) {
    EXPECT_FALSE(decodedRequest(line)) << line;
    EXPECT_FALSE(decodedAnswer(line)) << line;
  }
}

}  // namespace
}  // namespace Nimbrel::Reader
