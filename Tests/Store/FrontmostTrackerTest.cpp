#include "Store/FrontmostTracker.h"

#include "Model/AppIdentity.h"
#include "Support/FakeFrontApplication.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

const Application nobody;
const Application editor{"Editor", "org.example.Editor"};
const Application player{"Player", "org.example.Player"};

class FrontmostTrackerTest : public ::testing::Test {
 protected:
  void start() {
    tracker_.emplace(front_, [this] { return now_; });
  }
  void wait(double seconds) { now_ += Seconds(seconds); }
  /// The application for a capture so many seconds from now.
  [[nodiscard]] Application appAt(double seconds) const { return tracker_->appForCaptureAt(now_ + Seconds(seconds)); }

  Timestamp now_ = timestamp(1'000'000);
  Testing::FakeFrontApplication front_;
  std::optional<FrontmostTracker> tracker_;
};

TEST_F(FrontmostTrackerTest, BeginsWithTheApplicationInFront) {
  front_.application = editor;
  start();
  EXPECT_EQ(appAt(0), editor);
  EXPECT_EQ(appAt(-1), nobody) << "what was in front before is not known";
}

TEST_F(FrontmostTrackerTest, WithoutAnApplicationNothingIsKnown) {
  start();
  EXPECT_EQ(appAt(0), nobody);
}

TEST_F(FrontmostTrackerTest, ACaptureBelongsToTheLastThatCameToTheFrontBefore) {
  start();
  front_.activate(editor);
  wait(10);
  front_.activate(player);
  wait(10);
  EXPECT_EQ(appAt(-15), editor);
  EXPECT_EQ(appAt(-5), player);
  EXPECT_EQ(appAt(-25), nobody);
}

TEST_F(FrontmostTrackerTest, ACaptureOf119SecondsAgoIsAttributedAndOneOf120IsNot) {
  start();
  front_.activate(editor);
  wait(130);
  EXPECT_EQ(appAt(-119), editor);
  EXPECT_EQ(appAt(-120), nobody);
}

TEST_F(FrontmostTrackerTest, ACaptureAlmostFiveSecondsAheadIsAttributedAndOneOfFiveIsNot) {
  start();
  front_.activate(editor);
  EXPECT_EQ(appAt(4.9), editor);
  EXPECT_EQ(appAt(5), nobody);
}

TEST_F(FrontmostTrackerTest, AnActivation400MillisecondsLaterCountsAndOneOf600DoesNot) {
  start();
  front_.activate(editor);
  wait(10);
  front_.activate(player);
  EXPECT_EQ(appAt(-0.4), player);
  EXPECT_EQ(appAt(-0.6), editor);
}

TEST_F(FrontmostTrackerTest, OurOwnWindowsHideWhatWasInFrontBefore) {
  start();
  front_.activate(editor);
  wait(10);
  front_.activate({"Nimbrel", AppIdentity::bundleIdentifier()});
  wait(10);
  EXPECT_EQ(appAt(-15), editor);
  EXPECT_EQ(appAt(0), nobody);
}

TEST_F(FrontmostTrackerTest, AnApplicationWithoutANameChangesNothing) {
  start();
  front_.activate(editor);
  wait(1);
  front_.activate({"", "org.example.Nameless"});
  EXPECT_EQ(appAt(0), editor);
}

TEST_F(FrontmostTrackerTest, AnApplicationWithoutAnIdentifierIsKnownByItsName) {
  start();
  front_.activate({"Tool", ""});
  EXPECT_EQ(appAt(0), (Application{"Tool", ""}));
}

TEST_F(FrontmostTrackerTest, AnActivationOlderThan180SecondsIsForgottenAtTheNextOne) {
  start();
  front_.activate(editor);
  wait(180);
  front_.activate(player);
  EXPECT_EQ(appAt(-100), editor) << "the bound itself is within";
  wait(1);
  front_.activate(player);
  EXPECT_EQ(appAt(-100), nobody);
}

TEST_F(FrontmostTrackerTest, WithoutANewActivationTheLastOneHolds) {
  start();
  front_.activate(editor);
  wait(3600);
  EXPECT_EQ(appAt(-10), editor);
}

TEST_F(FrontmostTrackerTest, EndsItsObservationWithItself) {
  start();
  ASSERT_TRUE(front_.isObserved());
  tracker_.reset();
  EXPECT_FALSE(front_.isObserved());
}

}  // namespace
}  // namespace Nimbrel
