#include "Support/FakeOwnerAuthentication.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::FakeOwnerAuthentication;
using ::testing::IsEmpty;
using Testing::shotNamed;
using Testing::StoreHome;
using ::testing::UnorderedElementsAre;

class SensitiveLock : public ::testing::Test {
 protected:
  SensitiveLock() {
    add("secret.png", {"Password"});
    add("mail.png", {"Email"});
    add("clear.png", {});
    add("view.png", {});
    store_->reload();
  }

  void add(const std::string& name, const std::vector<std::string>& kinds) {
    home_.now += Seconds(1);
    store_->importFiles({home_.addFile(home_.path(name))});
    store_->database().setOCR(shotNamed(*store_, name)->id, "words", kinds);
  }
  [[nodiscard]] ShotPtr shot(std::string_view name) const { return shotNamed(*store_, name); }
  [[nodiscard]] bool isProtected(std::string_view name) const { return store_->isProtected(*shot(name)); }
  void access(const std::vector<std::string>& names) {
    ShotList shots;
    for (const auto& name : names) shots.push_back(shot(name));
    store_->withAccess(shots, [this] { ++actions_; });
  }
  void unlock(const std::string& name) {
    access({name});
    owner_->decide(true);
    ASSERT_FALSE(isProtected(name));
  }

  StoreHome home_;
  FakeOwnerAuthentication* owner_ = nullptr;
  std::unique_ptr<Store> store_ = [this] {
    Services services;
    auto owner = std::make_unique<FakeOwnerAuthentication>();
    owner_ = owner.get();
    services.ownerAuthentication = std::move(owner);
    return home_.open(ProcessRole::mainApplication, std::move(services));
  }();
  int actions_ = 0;
};

TEST_F(SensitiveLock, AShotWithLabelsIsProtectedUntilItIsUnlocked) {
  EXPECT_TRUE(isProtected("secret.png"));
  EXPECT_FALSE(isProtected("clear.png"));
  unlock("secret.png");
  EXPECT_TRUE(isProtected("mail.png"));
}

TEST_F(SensitiveLock, WithProtectionOffNothingIsProtectedAndNobodyIsAsked) {
  store_->settings().protectSensitive.set(false);
  EXPECT_FALSE(isProtected("secret.png"));
  access({"secret.png"});
  EXPECT_EQ(actions_, 1);
  EXPECT_THAT(owner_->reasons, IsEmpty());
}

TEST_F(SensitiveLock, WithoutAProtectedShotTheActionRunsAtOnce) {
  access({"clear.png", "view.png"});
  access({});
  EXPECT_EQ(actions_, 2);
  EXPECT_THAT(owner_->reasons, IsEmpty());
}

TEST_F(SensitiveLock, ABatchAsksOnceAndUnlocksOnlyWhatWasLocked) {
  access({"clear.png", "secret.png", "view.png"});
  EXPECT_EQ(actions_, 0);
  EXPECT_THAT(owner_->reasons, ElementsAre("Reveal sensitive screenshot content"));
  owner_->decide(true);
  EXPECT_EQ(actions_, 1);
  EXPECT_THAT(store_->unlockedSensitiveIDs(), ElementsAre(shot("secret.png")->id));
  EXPECT_EQ(store_->status(), "Imported 1") << "an unlock is no outcome that a user must be told";
}

TEST_F(SensitiveLock, TheActionFindsTheShotsUnlockedAndReloaded) {
  store_->database().setNote(shot("secret.png")->id, "written meanwhile");
  bool isUnlocked = false;
  std::string note;
  store_->withAccess({shot("secret.png")}, [&] {
    isUnlocked = !isProtected("secret.png");
    note = shot("secret.png")->note;
  });
  owner_->decide(true);
  EXPECT_TRUE(isUnlocked);
  EXPECT_EQ(note, "written meanwhile");
}

TEST_F(SensitiveLock, WhatIsUnlockedNeedsNoSecondAuthentication) {
  unlock("secret.png");
  access({"secret.png"});
  EXPECT_EQ(actions_, 2);
  EXPECT_EQ(owner_->reasons.size(), 1U);
  unlock("mail.png");
  EXPECT_THAT(store_->unlockedSensitiveIDs(), UnorderedElementsAre(shot("secret.png")->id, shot("mail.png")->id));
}

TEST_F(SensitiveLock, WhereNobodyCanBeAskedTheActionDoesNotRun) {
  owner_->isThere = false;
  access({"secret.png"});
  EXPECT_EQ(store_->status(), "Cannot unlock sensitive previews on this Mac");
  EXPECT_EQ(actions_, 0);
  EXPECT_THAT(owner_->reasons, IsEmpty());
}

TEST_F(SensitiveLock, ARefusalLeavesTheShotLocked) {
  access({"secret.png"});
  owner_->decide(false);
  EXPECT_EQ(store_->status(), "Sensitive preview remains locked");
  EXPECT_EQ(actions_, 0);
  EXPECT_TRUE(isProtected("secret.png"));
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
}

TEST_F(SensitiveLock, LeavingTheApplicationLocksAgain) {
  unlock("secret.png");
  const QSignalSpy changes(store_.get(), &Store::unlockedSensitiveIDsChanged);
  store_->setApplicationActive(false);
  EXPECT_TRUE(isProtected("secret.png"));
  store_->setApplicationActive(true);
  EXPECT_TRUE(isProtected("secret.png"));
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
  EXPECT_EQ(store_->status(), "");
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(SensitiveLock, AnUnlockWhileAnotherApplicationIsInFrontLastsForTheActionAlone) {
  access({"secret.png"});
  store_->setApplicationActive(false);
  bool wasUnlocked = false;
  store_->withAccess({shot("secret.png")}, [&] { wasUnlocked = !isProtected("secret.png"); });
  owner_->decide(true);
  EXPECT_TRUE(wasUnlocked);
  EXPECT_TRUE(isProtected("secret.png"));
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
}

TEST_F(SensitiveLock, ChangingTheSettingEitherWayLocksAgain) {
  unlock("secret.png");
  store_->settings().protectSensitive.set(false);
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
  store_->settings().protectSensitive.set(true);
  EXPECT_TRUE(isProtected("secret.png"));

  unlock("secret.png");
  store_->settings().autoFile.set(true);
  EXPECT_FALSE(isProtected("secret.png")) << "other settings lock nothing";
}

TEST_F(SensitiveLock, TheSettingOfAnotherProcessLocksToo) {
  unlock("secret.png");
  ASSERT_TRUE(home_.suiteOfOtherProcess()->set(QStringLiteral("protectSensitive"), false));
  store_->poll();
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
  ASSERT_TRUE(home_.suiteOfOtherProcess()->set(QStringLiteral("protectSensitive"), true));
  store_->poll();
  EXPECT_TRUE(isProtected("secret.png"));
}

TEST_F(SensitiveLock, LockingClearsTheStatusAndReloads) {
  unlock("secret.png");
  access({"mail.png"});
  owner_->decide(false);
  ASSERT_NE(store_->status(), "");
  store_->database().setNote(shot("clear.png")->id, "written meanwhile");
  store_->lockSensitive();
  EXPECT_EQ(store_->status(), "");
  EXPECT_EQ(shot("clear.png")->note, "written meanwhile");
}

TEST_F(SensitiveLock, WithNothingUnlockedLockingSeesWhatWasWrittenMeanwhile) {
  store_->database().setNote(shot("clear.png")->id, "written meanwhile");
  store_->lockSensitive();
  EXPECT_EQ(shot("clear.png")->note, "written meanwhile");
}

TEST_F(SensitiveLock, AProtectedShotIsInNoGroupUntilItIsUnlocked) {
  store_->database().setApp(shot("secret.png")->id, "Vault", "", Database::Trusted::Yes);
  store_->reload();
  EXPECT_EQ(store_->derived().contentOf(shot("secret.png")->id).key, "unknown");
  unlock("secret.png");
  EXPECT_EQ(store_->derived().contentOf(shot("secret.png")->id).key, "app:vault");
  store_->setApplicationActive(false);
  EXPECT_EQ(store_->derived().contentOf(shot("secret.png")->id).key, "unknown");
  store_->settings().protectSensitive.set(false);
  EXPECT_EQ(store_->derived().contentOf(shot("secret.png")->id).key, "app:vault");
}

TEST_F(SensitiveLock, LeavingAGroupOfProtectedShotsAloneShowsAllShots) {
  store_->database().setApp(shot("secret.png")->id, "Vault", "", Database::Trusted::Yes);
  store_->reload();
  unlock("secret.png");
  store_->setFilter({Filter::Content{"app:vault", "Vault"}});
  store_->setApplicationActive(false);
  EXPECT_EQ(store_->filter(), Filter{Filter::All{}});
}

TEST_F(SensitiveLock, LeavingAGroupThatStandsWithoutTheProtectedShotsKeepsIt) {
  const Filter vault{Filter::Content{"app:vault", "Vault"}};
  for (const auto* name : {"secret.png", "clear.png"})
    store_->database().setApp(shot(name)->id, "Vault", "", Database::Trusted::Yes);
  store_->reload();
  unlock("secret.png");
  store_->setFilter(vault);
  store_->setApplicationActive(false);
  EXPECT_EQ(store_->filter(), vault);
}

TEST_F(SensitiveLock, OtherFiltersStay) {
  const Filter project{Filter::Project{"p"}};
  store_->setFilter(project);
  store_->lockSensitive();
  EXPECT_EQ(store_->filter(), project);
}

TEST_F(SensitiveLock, AnUnlockIsForgottenWhenItsShotIsGone) {
  add("last.png", {"Token"});
  store_->reload();
  unlock("last.png");
  const auto id = shot("last.png")->id;
  store_->database().remove(id, Database::IgnorePath::No);
  store_->reload();
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
}

TEST_F(SensitiveLock, ANewShotUnderTheIdOfAnUnlockedOneIsProtected) {
  add("last.png", {"Token"});
  store_->reload();
  unlock("last.png");
  const auto id = shot("last.png")->id;
  store_->database().remove(id, Database::IgnorePath::No);
  add("new.png", {"Token"});
  store_->reload();
  ASSERT_EQ(shot("new.png")->id, id);
  EXPECT_TRUE(isProtected("new.png"));
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
}

TEST_F(SensitiveLock, AShotThatTookTheIdDuringTheAuthenticationIsNotUnlocked) {
  add("last.png", {"Token"});
  store_->reload();
  access({"last.png"});
  store_->database().remove(shot("last.png")->id, Database::IgnorePath::No);
  add("new.png", {"Token"});
  store_->reload();
  owner_->decide(true);
  EXPECT_TRUE(isProtected("new.png"));
  EXPECT_THAT(store_->unlockedSensitiveIDs(), IsEmpty());
}

TEST_F(SensitiveLock, WhateverShowsShotsIsToldToClose) {
  const QSignalSpy told(store_.get(), &Store::sensitiveLocked);
  store_->setApplicationActive(false);
  EXPECT_EQ(told.count(), 1);
  store_->settings().protectSensitive.set(false);
  EXPECT_EQ(told.count(), 2);
}

}  // namespace
}  // namespace Nimbrel
