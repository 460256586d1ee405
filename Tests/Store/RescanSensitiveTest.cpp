#include "Support/StoreHome.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::shotNamed;
using Testing::StoreHome;
using Strings = std::vector<std::string>;

class RescanSensitiveTest : public ::testing::Test {
 protected:
  ShotID add(const std::string& name, const std::string& text, const Strings& sensitive) {
    Shot shot;
    shot.path = home_.addFile(home_.path(name));
    shot.name = name;
    const auto id = store_->database().insert(shot);
    store_->database().setOCR(id, text, sensitive);
    store_->reload();
    return id;
  }

  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::mainApplication);
};

TEST_F(RescanSensitiveTest, LabelsWhatTheTextHoldsAndCounts) {
  add("a.png", "mail ann@example.com", {});
  add("b.png", "nothing here", {});
  add("c.png", "password: abcdef", {"Password"});
  EXPECT_EQ(store_->rescanSensitive(), 2U);
  EXPECT_THAT(shotNamed(*store_, "a.png")->sensitive, ElementsAre("Email"));
  EXPECT_THAT(shotNamed(*store_, "b.png")->sensitive, IsEmpty());
  EXPECT_EQ(store_->sensitiveCount(), 2U);
}

TEST_F(RescanSensitiveTest, ALabelThatCameFromElsewhereIsDropped) {
  add("a.png", "nothing here", {"Email"});
  EXPECT_EQ(store_->rescanSensitive(), 0U);
  EXPECT_THAT(shotNamed(*store_, "a.png")->sensitive, IsEmpty());
}

TEST_F(RescanSensitiveTest, LabelsInAnotherOrderAreWrittenAgain) {
  add("a.png", "password: abcdef ann@example.com", {"Email", "Password"});
  store_->rescanSensitive();
  EXPECT_THAT(shotNamed(*store_, "a.png")->sensitive, ElementsAre("Password", "Email"));
}

TEST_F(RescanSensitiveTest, AShotWhoseTextIsRightIsNotWritten) {
  add("a.png", "ann@example.com", {"Email"});
  const auto before = store_->database().ownChanges();
  store_->rescanSensitive();
  EXPECT_EQ(store_->database().ownChanges(), before);
}

TEST_F(RescanSensitiveTest, AShotThatHasNotBeenReadIsLeftAlone) {
  const auto id = add("a.png", "", {"Email"});
  EXPECT_EQ(store_->rescanSensitive(), 0U);
  EXPECT_THAT(store_->database().shot(id)->sensitive, ElementsAre("Email"));
}

TEST_F(RescanSensitiveTest, AShotIsProtectedByItsLabelsAndTheSetting) {
  add("a.png", "ann@example.com", {"Email"});
  add("b.png", "plain", {});
  EXPECT_TRUE(store_->isProtected(*shotNamed(*store_, "a.png")));
  EXPECT_FALSE(store_->isProtected(*shotNamed(*store_, "b.png")));
  store_->settings().protectSensitive.set(false);
  EXPECT_FALSE(store_->isProtected(*shotNamed(*store_, "a.png")));
}

}  // namespace
}  // namespace Nimbrel
