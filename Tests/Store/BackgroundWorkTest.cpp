#include "Store/BackgroundWork.h"

#include "QueueFixture.h"

#include <QSignalSpy>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::FakePictureReader;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::waitUntil;
using Wanted = PictureReader::Wanted;

class BackgroundWorkTest : public Testing::UnreadShots {
 protected:
  [[nodiscard]] std::unique_ptr<BackgroundWork> workOf(ProcessRole role) {
    return std::make_unique<BackgroundWork>(BackgroundWork::Tools{*database_, reader_, settings_}, role,
                                            [this](auto) { return mayHold_; });
  }

  bool mayHold_ = true;

 private:
  const UserFolders folders_{
      .home = folder_.path(), .applicationSupport = folder_.path("data"), .preferences = folder_.path("config")};
  const NullScreenshotTool tool_;
  Defaults defaults_{folders_.preferences, "suite"};
  Settings settings_{defaults_, folders_, tool_};
};

TEST_F(BackgroundWorkTest, WhatIsDoneWhenABatchOfTextEndedIsDoneBeforeTheNextBegins) {
  for (int i = 0; i < 201; ++i) add(std::to_string(i) + ".png");
  const auto work = workOf(ProcessRole::mainApplication);
  std::vector<std::size_t> readByThen;
  QObject::connect(work.get(), &BackgroundWork::textEnded, work.get(), [&] {
    EXPECT_EQ(work->remaining(), 0U);
    readByThen.push_back(reader_.requests.size());
  });
  reader_.answerByItself();
  work->startReading();
  ASSERT_TRUE(waitUntil([&] { return !work->isWorking(); }));
  EXPECT_THAT(readByThen, ElementsAre(200U, 201U));
}

TEST_F(BackgroundWorkTest, CodesWaitUntilTextIsRead) {
  database_->setOCR(add("read.png"), "text", {});
  add("unread.png");
  const auto work = workOf(ProcessRole::mainApplication);
  work->startReading();
  work->startCodes();
  ASSERT_TRUE(wasAsked(1));
  EXPECT_THAT(reader_.requests, ElementsAre(FakePictureReader::Request{pathOf("unread.png"), Wanted::TextAndCodes}));
  reader_.answer(PictureReading{});
  EXPECT_TRUE(work->isWorking());
  ASSERT_TRUE(wasAsked(2));
  EXPECT_EQ(reader_.requests.back(), (FakePictureReader::Request{pathOf("read.png"), Wanted::Codes}));
}

TEST_F(BackgroundWorkTest, ARoleThatEndsBeforeItsEventLoopWorksOnlyWhenAskedToWorkOff) {
  add("a.png");
  const auto work = workOf(ProcessRole::headless);
  work->startReading();
  work->startCodes();
  work->startHashing();
  EXPECT_FALSE(work->isWorking());
  reader_.answerByItself();
  QSignalSpy done(work.get(), &BackgroundWork::done);
  work->workOff();
  ASSERT_TRUE(waitUntil([&] { return done.count() == 1; }));
  EXPECT_THAT(database_->pendingOCR(1), IsEmpty());
}

TEST_F(BackgroundWorkTest, WhatTheCatalogueIsKnownNotToHoldIsNotLookedFor) {
  add("a.png");
  const auto work = workOf(ProcessRole::mainApplication);
  mayHold_ = false;
  work->startReading();
  work->startHashing();
  EXPECT_FALSE(work->isWorking());
  mayHold_ = true;
  work->startReading();
  EXPECT_TRUE(work->isWorking());
}

TEST_F(BackgroundWorkTest, ReadingIsNotTriedAgainWhereNothingWasLost) {
  add("a.png");
  const auto work = workOf(ProcessRole::mainApplication);
  work->retryReading();
  EXPECT_FALSE(work->isWorking());
  reader_.answerByItself();
  reader_.isMissing = true;
  work->startReading();
  ASSERT_TRUE(waitUntil([&] { return !work->isWorking(); }));
  work->retryReading();
  EXPECT_FALSE(work->isWorking());
  EXPECT_THAT(reader_.requests, SizeIs(1));
}

}  // namespace
}  // namespace Nimbrel
