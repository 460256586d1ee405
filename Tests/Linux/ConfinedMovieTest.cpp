#include "Platform/MediaFile.h"
#include "Platform/MovieWriter.h"

#include "Mount.h"
#include "Support/LogRecorder.h"
#include "Support/Movies.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <vector>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace Testing;

constexpr QSize size(160, 120);

class MovieOnAFullDisk : public ::testing::Test {
 protected:
  MovieOnAFullDisk() { folder_.makeFolder("disk"); }

  [[nodiscard]] std::set<std::string> namesOnDisk() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path("disk"))) names.insert(entry.path().filename());
    return names;
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("disk/movie.mov");
};

/// A picture that shares little with its neighbours, so that it takes some room.
QImage picture(int number) { return numberedPicture(number * 40503 % 65536, size); }

TEST_F(MovieOnAFullDisk, AnExportLeavesNothing) {
  const auto source = folder_.path("source.mov");
  writeMovie(source, {.times = steadyTimes(10), .end = 10, .sound = MadeMovie::Sound{.end = 10}});
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"), "size=16k");
  const auto failure = MediaFile::exportMovie(source, std::vector<MediaFile::TimeRange>{{0, 10}}, path_, {});
  EXPECT_EQ(failure, Error{"No space left on the disk"});
  EXPECT_THAT(namesOnDisk(), IsEmpty());
}

TEST_F(MovieOnAFullDisk, WhatWasRecordedCanBePlayed) {
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"), "size=128k");
  const auto writer = MovieWriter::open(path_, {.size = size});
  ASSERT_TRUE(writer);
  std::optional<Error> failure;
  int frames = 0;
  for (; frames < 3000 && !failure; ++frames) failure = writer.value()->addFrame(picture(frames), frames / 30.0);
  EXPECT_EQ(failure, Error{"No space left on the disk"});
  const auto movie = readMovie(path_);
  EXPECT_GT(movie.pictures.size(), 10U);
  EXPECT_LE(static_cast<int>(movie.pictures.size()), frames);
}

TEST_F(MovieOnAFullDisk, ARecordingStaysInFragmentsWhereThereIsNoRoomForAPlainOne) {
  const LogRecorder log;
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"), "size=256k");
  const auto writer = MovieWriter::open(path_, {.size = size});
  ASSERT_TRUE(writer);
  int frames = 0;
  for (; frames < 3000 && fs::file_size(path_) < 160'000; ++frames) {
    ASSERT_FALSE(writer.value()->addFrame(picture(frames), frames / 30.0));
  }
  const auto failure = writer.value()->finish(frames / 30.0);
  EXPECT_FALSE(failure) << failure->message;
  EXPECT_THAT(namesOnDisk(), ElementsAre("movie.mov"));
  EXPECT_EQ(static_cast<int>(readMovie(path_).pictures.size()), frames);
  EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("stays in fragments: No space left on the disk")));
}

}  // namespace
}  // namespace Nimbrel
