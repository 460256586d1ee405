#include "Views/Settings/SettingsViewFixture.h"

#include "Support/FakeOwnerAuthentication.h"

#include <QSignalSpy>

namespace Nimbrel {
namespace {

using PrivacyPaneTest = Testing::SettingsViewFixture;

TEST_F(PrivacyPaneTest, SwitchingProtectionLocksEverythingAgain) {
  show();
  const QSignalSpy locked(store_.get(), &Store::sensitiveLocked);
  click("protectSensitive");
  EXPECT_FALSE(settings().protectSensitive());
  const auto before = locked.count();
  click("protectSensitive");
  EXPECT_TRUE(settings().protectSensitive());
  EXPECT_GT(locked.count(), before);
}

class UnlockedPrivacyTest : public ::testing::Test {
 protected:
  UnlockedPrivacyTest() {
    auto owner = std::make_unique<Testing::FakeOwnerAuthentication>();
    owner_ = owner.get();
    Services services;
    services.ownerAuthentication = std::move(owner);
    store_ = home_.open(ProcessRole::tool, std::move(services));
  }

  Testing::StoreHome home_;
  Testing::FakeOwnerAuthentication* owner_ = nullptr;
  std::unique_ptr<Store> store_;
};

TEST_F(UnlockedPrivacyTest, WhatWasUnlockedIsLockedWhenProtectionIsSwitchedOn) {
  store_->importFiles({home_.addFile(home_.desktop("Screenshot 1.png"))});
  store_->database().setOCR(store_->shots().front()->id, "somebody", {"Email"});
  store_->reload();
  const auto shot = store_->shots().front();
  store_->withAccess({shot}, [] {});
  owner_->decide(true);
  ASSERT_FALSE(store_->isProtected(*shot));
  const std::unique_ptr<SettingsView> view(new SettingsView(*store_, {}));
  auto* toggle = view->findChild<QCheckBox*>(QStringLiteral("settings.protectSensitive"));
  ASSERT_NE(toggle, nullptr);
  toggle->click();
  toggle->click();
  EXPECT_TRUE(store_->isProtected(*shot));
  EXPECT_TRUE(store_->unlockedSensitiveIDs().empty());
}

TEST_F(PrivacyPaneTest, ThePolicyComesUpInASheetOfTheWindow) {
  QPointer<QDialog> sheet;
  show({.privacyPolicy = [&sheet](QWidget* window) {
    sheet = new QDialog(window);
    return sheet.data();
  }});
  click("privacyPolicy");
  ASSERT_NE(sheet, nullptr);
  EXPECT_TRUE(sheet->isVisible());
  EXPECT_EQ(sheet->parentWidget(), view_);
  sheet->reject();
  deleteWhatWaits();
  EXPECT_EQ(sheet, nullptr);
}

}  // namespace
}  // namespace Nimbrel
