#include "Linux/Files/OwnChanges.h"

#include "FileEventsFixture.h"

#include <sys/inotify.h>

#include <fstream>

namespace Nimbrel {

namespace {

class OwnChangesTest : public ::testing::Test {
 protected:
  [[nodiscard]] bool covers(std::uint32_t mask, std::chrono::milliseconds later = {}) {
    return changes_.covers(file_, mask, start_ + later);
  }

  Testing::TemporaryFolder folder_;
  std::string file_ = folder_.path("file");
  OwnChanges changes_;
  OwnChanges::Clock::time_point start_ = OwnChanges::Clock::now();
};

class AnnouncedChanges : public Testing::FileEventsFixture {
 protected:
  void SetUp() override {
    folder_.makeFolder("library");
    folder_.makeFolder("outside");
    watchBelow(folder_.path("library"));
  }
};

}  // namespace

TEST_F(OwnChangesTest, WhatWasNotAnnouncedIsNotCovered) {
  changes_.announce(folder_.path("other"), start_);
  EXPECT_FALSE(covers(IN_CREATE));
}

TEST_F(OwnChangesTest, TheEventsOfOneChangeAreCovered) {
  changes_.announce(file_, start_);
  folder_.write("file", "content");
  EXPECT_TRUE(covers(IN_CREATE));
  EXPECT_TRUE(covers(IN_CLOSE_WRITE));
  EXPECT_TRUE(covers(IN_ATTRIB));
}

TEST_F(OwnChangesTest, EventsAfterTheFileBecameAnotherAreNotCovered) {
  changes_.announce(file_, start_);
  folder_.write("file", "content");
  EXPECT_TRUE(covers(IN_MOVED_TO));
  folder_.write("file", "longer content");
  EXPECT_FALSE(covers(IN_CLOSE_WRITE));
  EXPECT_FALSE(covers(IN_ATTRIB)) << "the announcement is used up";
}

TEST_F(OwnChangesTest, AFileThatComesBackAfterItsRemovalIsNotCovered) {
  changes_.announce(file_, start_);
  EXPECT_TRUE(covers(IN_DELETE));
  folder_.write("file", "content");
  EXPECT_FALSE(covers(IN_CREATE));
}

TEST_F(OwnChangesTest, AnAnnouncementLapsesAfterFiveSeconds) {
  changes_.announce(file_, start_);
  EXPECT_TRUE(covers(IN_CREATE, std::chrono::milliseconds(4999)));
  EXPECT_FALSE(covers(IN_CREATE, std::chrono::milliseconds(5000)));
}

TEST_F(OwnChangesTest, ASecondAnnouncementLastsFromItsOwnMoment) {
  changes_.announce(file_, start_);
  changes_.announce(file_, start_ + std::chrono::seconds(3));
  EXPECT_TRUE(covers(IN_CREATE, std::chrono::milliseconds(7999)));
  EXPECT_FALSE(covers(IN_CREATE, std::chrono::milliseconds(8000)));
}

TEST_F(AnnouncedChanges, AreNotToldHoweverTheyAreMade) {
  const auto file = folder_.path("library/file");
  folder_.write("outside/file", "content");
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(file);
    rename("outside/file", "library/file");
  })) << "moved in";
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(file);
    folder_.write("library/file", "other content");
  })) << "written in place";
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(file);
    events_->expectOwnChange(folder_.path("library/renamed"));
    rename("library/file", "library/renamed");
  })) << "renamed";
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(folder_.path("library/renamed"));
    remove("library/renamed");
  })) << "removed";
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(folder_.path("library/new"));
    events_->expectOwnChange(folder_.path("library/new/file"));
    folder_.write("library/new/file", "content");
  })) << "written into a new folder";
}

TEST_F(AnnouncedChanges, DoNotHideThoseOfOthers) {
  EXPECT_TRUE(isTold([&] {
    events_->expectOwnChange(folder_.path("library/ours"));
    folder_.write("library/ours", "content");
    folder_.write("library/theirs", "content");
  }));
}

TEST_F(AnnouncedChanges, AreUsedUpByTheChange) {
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(folder_.path("library/file"));
    folder_.write("library/file", "content");
  }));
  EXPECT_TRUE(isTold([&] { folder_.write("library/file", "the content of another"); }));
}

TEST_F(AnnouncedChanges, CoverAFolderThatIsWatchedInTwoWays) {
  watch({{folder_.path("library"), WatchDepth::Flat}, {folder_.path("library"), WatchDepth::Recursive}});
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(folder_.path("library/file"));
    folder_.write("library/file", "content");
  }));
}

TEST_F(AnnouncedChanges, OfANewFolderLeaveItWatched) {
  EXPECT_TRUE(isNotTold([&] {
    events_->expectOwnChange(folder_.path("library/new"));
    folder_.makeFolder("library/new");
  }));
  EXPECT_TRUE(isWatched("library/new"));
}

}  // namespace Nimbrel
