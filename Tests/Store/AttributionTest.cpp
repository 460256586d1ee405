#include "Support/FakeFrontApplication.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using Testing::FakeFrontApplication;
using Testing::shotNamed;
using Testing::StoreHome;

const Application editor{"Editor", "org.example.Editor"};

class Attribution : public ::testing::Test {
 protected:
  void open(ProcessRole role) {
    Services services;
    auto front = std::make_unique<FakeFrontApplication>();
    front->application = editor;
    front_ = front.get();
    services.frontApplication = std::move(front);
    store_ = home_.open(role, std::move(services));
  }
  std::string add(const std::string& path, double secondsFromNow) {
    home_.addFile(path);
    Testing::setModificationTime(path, secondsSince1970(home_.now) + secondsFromNow);
    return path;
  }
  [[nodiscard]] static Application appOf(const Shot& shot) { return {shot.appName, shot.bundleID}; }

  StoreHome home_;
  std::unique_ptr<Store> store_;
  FakeFrontApplication* front_ = nullptr;
};

TEST_F(Attribution, AFreshFileIsAttributedAndTrusted) {
  open(ProcessRole::menuBarCompanion);
  home_.now += Seconds(10);
  add(home_.desktop("Screenshot 1.png"), -2);
  store_->scan();
  const auto shot = shotNamed(*store_, "Screenshot 1.png");
  EXPECT_EQ(appOf(*shot), editor);
  EXPECT_TRUE(shot->appAttributionTrusted);
  EXPECT_EQ(shot->shownName, "");
}

TEST_F(Attribution, AnOldFileIsNot) {
  open(ProcessRole::menuBarCompanion);
  home_.now += Seconds(150);
  add(home_.desktop("Screenshot 1.png"), -120);
  store_->scan();
  const auto shot = shotNamed(*store_, "Screenshot 1.png");
  EXPECT_EQ(appOf(*shot), Application{});
  EXPECT_FALSE(shot->appAttributionTrusted);
}

TEST_F(Attribution, AFileOfTheLibraryIsNot) {
  open(ProcessRole::menuBarCompanion);
  home_.now += Seconds(10);
  add(home_.inLibrary("2026/2026-03/1.png"), -2);
  store_->scan();
  const auto shot = shotNamed(*store_, "1.png");
  EXPECT_EQ(appOf(*shot), Application{});
  EXPECT_FALSE(shot->appAttributionTrusted);
}

TEST_F(Attribution, AFileTakenWhileWeWereInFrontIsNot) {
  open(ProcessRole::menuBarCompanion);
  front_->activate({"Nimbrel", "com.halderquist.nimbrel"});
  home_.now += Seconds(10);
  add(home_.desktop("Screenshot 1.png"), -2);
  store_->scan();
  EXPECT_FALSE(shotNamed(*store_, "Screenshot 1.png")->appAttributionTrusted);
}

TEST_F(Attribution, AnImportOfAFreshFileIsAttributedToo) {
  open(ProcessRole::mainApplication);
  home_.now += Seconds(10);
  store_->importFiles({add(home_.path("a.png"), -2)});
  EXPECT_EQ(appOf(*shotNamed(*store_, "a.png")), editor);
}

TEST_F(Attribution, ProcessesThatAreOverAtOnceAskNobody) {
  for (const auto role : {ProcessRole::tool, ProcessRole::headless}) {
    open(role);
    EXPECT_FALSE(front_->isObserved());
  }
}

TEST_F(Attribution, ACaptureIsOfTheApplicationInFront) {
  open(ProcessRole::mainApplication);
  EXPECT_EQ(store_->currentCaptureApplication(), editor);
  front_->application = Application{"Tool", ""};
  EXPECT_EQ(store_->currentCaptureApplication(), (Application{"Tool", ""}));
}

TEST_F(Attribution, ACaptureWithOneOfOurWindowsInFrontIsOfNone) {
  open(ProcessRole::menuBarCompanion);
  for (const char* identifier : {"com.halderquist.nimbrel", "com.halderquist.nimbrel.menubar"}) {
    front_->application = Application{"Nimbrel", identifier};
    EXPECT_EQ(store_->currentCaptureApplication(), Application{}) << identifier;
  }
}

TEST_F(Attribution, ACaptureOfNothingThatHasANameIsOfNone) {
  open(ProcessRole::mainApplication);
  front_->application = Application{"", "org.example.Nameless"};
  EXPECT_EQ(store_->currentCaptureApplication(), Application{});
  front_->application.reset();
  EXPECT_EQ(store_->currentCaptureApplication(), Application{});
}

}  // namespace
}  // namespace Nimbrel
