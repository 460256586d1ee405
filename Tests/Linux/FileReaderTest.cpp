#include "Platform/FileReader.h"

#include "Support/TemporaryFolder.h"
#include "Unprivileged.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::TemporaryFolder;
using Testing::Unprivileged;

class FileReaderTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string failureOf(const std::string& path) const {
    const auto file = FileReader::open(path);
    return file ? "opened" : file.error().message;
  }

  TemporaryFolder folder_;
};

TEST_F(FileReaderTest, ReadsPieceByPieceAndTellsTheEnd) {
  const auto path = folder_.write("a", "0123456789");
  Testing::setModificationTime(path, 1'700'000'000.5);
  auto file = FileReader::open(path);
  ASSERT_TRUE(file);
  EXPECT_EQ(file.value().size(), 10U);
  EXPECT_EQ(file.value().modified(), timestamp(1'700'000'000.5));
  std::string room(4, '\0');
  std::string content;
  for (const std::size_t expected : {4, 4, 2, 0}) {
    const auto read = file.value().read(room);
    ASSERT_TRUE(read);
    EXPECT_EQ(read.value(), expected);
    content += room.substr(0, read.value());
  }
  EXPECT_EQ(content, "0123456789");
}

TEST_F(FileReaderTest, OpensThroughALink) {
  folder_.write("a", "content");
  fs::create_symlink("a", folder_.path("link"));
  EXPECT_EQ(failureOf(folder_.path("link")), "opened");
}

TEST_F(FileReaderTest, OpensFilesAloneAndWaitsForNothing) {
  const auto pipe = folder_.path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(failureOf(pipe), "It is not a file");
  EXPECT_EQ(failureOf(folder_.makeFolder("folder")), "It is not a file");
  EXPECT_EQ(failureOf(folder_.path("missing")), "The file is not there");
  EXPECT_EQ(failureOf(folder_.path(std::string_view("a\0b", 3))), "The name is not possible there");
}

TEST_F(FileReaderTest, AnUnreadableFileIsAnError) {
  const auto path = folder_.write("a", "content");
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(failureOf(path), "Permission denied");
}

TEST_F(FileReaderTest, NoticesWhatIsWrittenMeanwhile) {
  const auto path = folder_.write("a", "content");
  Testing::setModificationTime(path, 1'700'000'000);
  const auto untouched = FileReader::open(path);
  ASSERT_TRUE(untouched);
  EXPECT_FALSE(untouched.value().hasChanged());
  std::ofstream(path, std::ios::app).put('x');
  Testing::setModificationTime(path, 1'700'000'000);
  EXPECT_TRUE(untouched.value().hasChanged()) << "it is longer";
  const auto longer = FileReader::open(path);
  ASSERT_TRUE(longer);
  EXPECT_FALSE(longer.value().hasChanged());
  Testing::setModificationTime(path, 1'700'000'000.000'001);
  EXPECT_TRUE(longer.value().hasChanged()) << "its date is another";
}

TEST_F(FileReaderTest, AFileThatGivesWayToAnotherIsStillTheSame) {
  const auto file = FileReader::open(folder_.write("a", "content"));
  ASSERT_TRUE(file);
  fs::rename(folder_.write("b", "other content"), folder_.path("a"));
  EXPECT_FALSE(file.value().hasChanged());
}

}  // namespace
}  // namespace Nimbrel
