#include "Linux/Instance/StartMessage.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

TEST(StartMessages, GoThereAndBack) {
  const StartRequest activate{.activationToken = "box_TIME12"};
  const StartRequest open{.kind = StartRequest::Kind::Open, .files = {"/tmp/a b.png", "/tmp/caf\xE9.png"}};
  const StartRequest action{.kind = StartRequest::Kind::Action, .action = "selection"};
  for (const auto& request : {activate, open, action}) {
    EXPECT_EQ(StartMessage::decode(StartMessage::encode(request)), request);
  }
}

TEST(StartMessages, WhatIsNoneIsRefused) {
  for (const auto* text : {"", "{", "[]", "{}", R"({"kind": "explode"})", R"({"kind": 1})", "activate"}) {
    EXPECT_FALSE(StartMessage::decode(text)) << text;
  }
}

TEST(StartMessages, OnlyFilesOfThisMachineCount) {
  const auto request = StartMessage::decode(
      R"({"kind": "open",
          "files": ["https://example.org/a.png", "a.png", 7, "file://elsewhere/a.png", "file:///a.png"]})");
  ASSERT_TRUE(request);
  EXPECT_EQ(request->files, std::vector<std::string>{"/a.png"});
}

}  // namespace
}  // namespace Nimbrel
