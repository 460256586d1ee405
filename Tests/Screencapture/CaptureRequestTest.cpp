#include "Screencapture/CaptureRequest.h"

#include <gtest/gtest.h>

#include <vector>

namespace Nimbrel::Screencapture {

namespace {

using Subject = CaptureRequest::Subject;
using Kind = CaptureRequest::Kind;
using Arguments = std::vector<std::string_view>;

void expectRequest(const Arguments& arguments, Subject subject, Kind kind) {
  const auto request = captureRequest(arguments);
  ASSERT_TRUE(request);
  EXPECT_EQ(request.value(), (CaptureRequest{subject, kind, "/folder/a file"}));
}

TEST(CaptureRequest, EachListMeansOneThing) {
  expectRequest({"-i", "-s", "-d", "/folder/a file"}, Subject::selection, Kind::picture);
  expectRequest({"-i", "-w", "-d", "/folder/a file"}, Subject::window, Kind::picture);
  expectRequest({"-m", "-d", "/folder/a file"}, Subject::mainScreen, Kind::picture);
  expectRequest({"-v", "-i", "-Jvideo", "-d", "/folder/a file"}, Subject::selection, Kind::movie);
  expectRequest({"-v", "-m", "-d", "/folder/a file"}, Subject::mainScreen, Kind::movie);
}

TEST(CaptureRequest, NothingElseIsUnderstood) {
  const std::vector<Arguments> wrong{
      {},
      {"-m"},
      {"-d", "x.png"},
      {"-m", "-d"},
      {"-m", "-d", ""},
      {"-m", "x.png"},
      {"-d", "x.png", "-m"},
      {"-s", "-i", "-d", "x.png"},
      {"-i", "-d", "x.png"},
      {"-i", "-s", "-w", "-d", "x.png"},
      {"-m", "-m", "-d", "x.png"},
      {"-i", "-Jvideo", "-d", "x.mov"},
      {"-v", "-i", "-s", "-d", "x.mov"},
      {"-v", "-i", "-Jvideo", "-x", "-d", "x.mov"},
      {"", "-m", "-d", "x.png"},
      {"-m", "", "-d", "x.png"},
      {"-m", "-d", "x.png", "y.png"},
      {"--help"},
  };
  for (const auto& arguments : wrong) {
    const auto request = captureRequest(arguments);
    ASSERT_FALSE(request);
    EXPECT_TRUE(request.error().message.starts_with("usage: nimbrel-screencapture"));
  }
}

TEST(CaptureRequest, APathMayLookLikeAnOption) {
  const Arguments arguments{"-m", "-d", "-d"};
  const auto request = captureRequest(arguments);
  ASSERT_TRUE(request);
  EXPECT_EQ(request.value().path, "-d");
}

}  // namespace

}  // namespace Nimbrel::Screencapture
