#include "Linux/Reading/AttemptJournal.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

namespace Nimbrel {
namespace {

using namespace Testing;

class AttemptJournalTest : public ::testing::Test {
 protected:
  const TemporaryFolder folder_;
  const std::string file_ = folder_.path("caches/journal.json");
  AttemptJournal journal_{file_};
};

TEST_F(AttemptJournalTest, CountsWhatWasBegunAndNotFinished) {
  const auto picture = folder_.write("\xFF name.png", "picture");
  EXPECT_EQ(journal_.attempts(picture), 0);
  journal_.begin(picture);
  journal_.begin(picture);
  EXPECT_EQ(journal_.attempts(picture), 2);
  EXPECT_EQ(AttemptJournal(file_).attempts(picture), 2) << "in another process";
  journal_.takeBack(picture);
  EXPECT_EQ(journal_.attempts(picture), 1);
  journal_.finish(picture);
  EXPECT_EQ(journal_.attempts(picture), 0);
  EXPECT_EQ(contentOf(file_), "[]");
}

TEST_F(AttemptJournalTest, TakesAChangedPictureForAnother) {
  const auto picture = folder_.write("picture.png", "picture");
  journal_.begin(picture);
  setModificationTime(picture, 1'500'000'000);
  EXPECT_EQ(journal_.attempts(picture), 0);
  journal_.begin(picture);
  EXPECT_EQ(journal_.attempts(picture), 1);
  folder_.write("picture.png", "another picture");
  setModificationTime(picture, 1'500'000'000);
  EXPECT_EQ(journal_.attempts(picture), 0);
}

TEST_F(AttemptJournalTest, HoldsNothingAgainstAMissingFile) {
  journal_.begin(folder_.path("missing.png"));
  EXPECT_EQ(journal_.attempts(folder_.path("missing.png")), 0);
}

TEST_F(AttemptJournalTest, TakesADamagedFileForAnEmptyOne) {
  const auto picture = folder_.write("picture.png", "picture");
  for (const auto* damage : {"", "[", "{}", "[1,null,[[]],[\"\",\"1\",\"1\",5]]", "\xFF\xFF"}) {
    folder_.write("caches/journal.json", damage);
    EXPECT_EQ(journal_.attempts(picture), 0) << damage;
    journal_.begin(picture);
    EXPECT_EQ(journal_.attempts(picture), 1) << damage;
  }
}

TEST_F(AttemptJournalTest, ForgetsTheOldestOfManyPictures) {
  std::string first;
  std::string last;
  for (int i = 0; i < 300; ++i) {
    last = folder_.write("picture" + std::to_string(i), "picture");
    if (i == 0) first = last;
    journal_.begin(last);
  }
  EXPECT_EQ(journal_.attempts(first), 0);
  EXPECT_EQ(journal_.attempts(last), 1);
  EXPECT_LT(std::filesystem::file_size(file_), 64U * 1024);
}

TEST_F(AttemptJournalTest, GoesOnWithoutAPlaceToWriteTo) {
  const auto picture = folder_.write("picture.png", "picture");
  AttemptJournal journal(folder_.write("file", "") + "/below/journal.json");
  journal.begin(picture);
  EXPECT_EQ(journal.attempts(picture), 0);
  journal.finish(picture);
}

}  // namespace
}  // namespace Nimbrel
