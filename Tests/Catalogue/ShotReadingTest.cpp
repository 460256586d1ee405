#include "Catalogue/ShotReading.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <chrono>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr int shotCount = 100;

/// A catalogue of a hundred shots, three of each moment.
class ShotReadingTest : public ::testing::Test {
 protected:
  ShotReadingTest() {
    const Database::QuickCommits quickly(*database_);
    for (int i = 0; i < shotCount; ++i) add(i, i / 3);
  }

  void add(int number, double seconds) const {
    Shot shot;
    shot.path = "/s/" + std::to_string(number) + ".png";
    shot.date = timestamp(seconds);
    database_->insert(shot);
  }

  Testing::TemporaryFolder folder_;
  std::unique_ptr<Database> database_ = Database::open(folder_.path("nimbrel.sqlite")).value();
};

TEST_F(ShotReadingTest, StretchesComeToTheWholeList) {
  const auto whole = database_->allShots({});
  ShotReading reading(*database_, whole);
  int stretches = 1;
  while (reading.readFor(std::chrono::nanoseconds(0)) == ShotReading::Outcome::More) ++stretches;
  EXPECT_GT(stretches, 1);
  EXPECT_EQ(reading.shots(), whole) << "in its order, and with its values";
}

TEST_F(ShotReadingTest, RowsThatComeAndGoBetweenStretchesLeaveNoneTwice) {
  ShotReading reading(*database_);
  ASSERT_EQ(reading.readFor(std::chrono::nanoseconds(0)), ShotReading::Outcome::More);
  const auto read = reading.shots();
  add(1000, 1000);
  add(1001, -1);
  database_->remove(read.front()->id, Database::IgnorePath::No);
  reading.readAll();
  ShotIDSet ids;
  for (const auto& shot : reading.shots()) ids.insert(shot->id);
  EXPECT_EQ(ids.size(), reading.shots().size());
  EXPECT_THAT(ids, SizeIs(shotCount + 1)) << "the one that is newer than what was read is missed";
  EXPECT_EQ(reading.shots().back()->path, "/s/1001.png");
}

TEST_F(ShotReadingTest, AShotThatGotAnotherDateIsANewValue) {
  const auto former = database_->allShots({});
  database_->remove(former.back()->id, Database::IgnorePath::No);
  add(0, 500);
  const auto now = database_->allShots(former);
  EXPECT_THAT(now, SizeIs(shotCount));
  EXPECT_THAT(former, Not(::testing::Contains(now.front())));
  EXPECT_EQ(now[1], former.front());
}

TEST_F(ShotReadingTest, AnEmptyCatalogueIsReadAtOnce) {
  for (const auto& shot : database_->allShots({})) database_->remove(shot->id, Database::IgnorePath::No);
  ShotReading reading(*database_);
  EXPECT_EQ(reading.readFor(std::chrono::nanoseconds(0)), ShotReading::Outcome::Done);
  EXPECT_THAT(reading.shots(), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
