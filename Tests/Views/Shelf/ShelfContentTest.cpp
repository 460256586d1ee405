#include "Views/Shelf/ShelfContent.h"

#include "Support/FakeOwnerAuthentication.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

class ShelfContentTest : public ::testing::Test {
 protected:
  ShelfContentTest() {
    Services services;
    auto owner = std::make_unique<Testing::FakeOwnerAuthentication>();
    owner_ = owner.get();
    services.ownerAuthentication = std::move(owner);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    Shot shot;
    shot.path = home_.desktop("a.png");
    shot.name = "a.png";
    shot.date = home_.now;
    shot.added = home_.now;
    id_ = store_->database().insert(shot);
    store_->reload();
  }

  void read(const std::string& text, const std::vector<std::string>& sensitive = {}) {
    store_->database().setOCR(id_, text, sensitive);
    store_->reload();
  }
  [[nodiscard]] const ShotPtr& shot() const { return store_->shots().front(); }
  [[nodiscard]] ShelfContent content() const { return shelfContent(*store_, *shot()); }

  Testing::StoreHome home_;
  Testing::FakeOwnerAuthentication* owner_ = nullptr;
  std::unique_ptr<Store> store_;
  ShotID id_ = 0;
};

TEST_F(ShelfContentTest, AFreshShotIsMaskedUntilItWasRead) {
  EXPECT_EQ(content(), (ShelfContent{.title = QStringLiteral("Checking screenshot…"),
                                     .place = QStringLiteral("Saved in Inbox"),
                                     .isMasked = true,
                                     .canFile = true}));
  read("");
  EXPECT_EQ(content(), (ShelfContent{.title = QStringLiteral("a.png"),
                                     .place = QStringLiteral("Saved in Inbox"),
                                     .canReleasePicture = true,
                                     .canFile = true}));
}

TEST_F(ShelfContentTest, OneWithTextOffersIt) {
  read("A recipe for soup");
  EXPECT_TRUE(content().canCopyText);
}

TEST_F(ShelfContentTest, ASensitiveOneStaysMaskedAndOffersEverythingBehindTheOwner) {
  read("the key is under the mat", {"Password"});
  EXPECT_EQ(content(), (ShelfContent{.title = QStringLiteral("Sensitive screenshot"),
                                     .place = QStringLiteral("Saved in Inbox"),
                                     .isMasked = true,
                                     .canReleasePicture = true,
                                     .canCopyText = true,
                                     .canFile = true}));
  store_->withAccess({shot()}, [] {});
  owner_->decide(true);
  EXPECT_EQ(content().title, QStringLiteral("a.png"));
  EXPECT_FALSE(content().isMasked);
}

TEST_F(ShelfContentTest, WithProtectionOffAFreshShotIsOpenAndHasNoTextYet) {
  store_->settings().protectSensitive.set(false);
  EXPECT_EQ(content(), (ShelfContent{.title = QStringLiteral("a.png"),
                                     .place = QStringLiteral("Saved in Inbox"),
                                     .canReleasePicture = true,
                                     .canFile = true}));
}

TEST_F(ShelfContentTest, AFiledShotIsInTheLibrary) {
  read("");
  home_.addFile(home_.desktop("a.png"));
  store_->file({shot()});
  ASSERT_TRUE(shot()->filed);
  EXPECT_EQ(content().place, QStringLiteral("Saved in Library"));
  EXPECT_FALSE(content().canFile);
}

}  // namespace
}  // namespace Nimbrel
