#include "Views/Inspector/InspectorPicture.h"

#include <QPlainTextEdit>

#include "Support/Pictures.h"
#include "Views/Inspector/InspectorFixture.h"

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::waitUntil;

class InspectorLock : public Testing::InspectorFixture {
 protected:
  InspectorLock() { show(addRead("secret.png", "my password is here", {"Password", "Email"})); }
};

TEST_F(InspectorLock, AProtectedShotHasNoDetailsTagsOrTextUntilItIsUnlocked) {
  for (const auto* name : {"form", "details", "name", "tags", "note", "ocr", "warning", "actions"}) {
    EXPECT_FALSE(isThere(name)) << name;
  }
  ASSERT_TRUE(isShown("locked"));
  click("unlock");
  EXPECT_THAT(owner_->reasons, SizeIs(1));
  owner_->decide(true);
  EXPECT_FALSE(isThere("locked"));
  EXPECT_TRUE(isShown("form"));
  EXPECT_EQ(field("name").text(), QStringLiteral("secret.png"));
  EXPECT_THAT(workspace_->files, IsEmpty()) << "unlocking does nothing further";
}

TEST_F(InspectorLock, ARefusalLeavesThePanelUp) {
  click("unlock");
  owner_->decide(false);
  EXPECT_TRUE(isShown("locked"));
  EXPECT_FALSE(isThere("form"));
  EXPECT_EQ(store_->status(), "Sensitive preview remains locked");
}

TEST_F(InspectorLock, LeavingTheApplicationTakesTheFormAwayAndKeepsTheDraft) {
  click("unlock");
  owner_->decide(true);
  QTest::keyClicks(&at("note"), QStringLiteral("half a th"));
  store_->setApplicationActive(false);
  EXPECT_FALSE(isThere("form"));
  EXPECT_FALSE(isThere("note"));
  EXPECT_TRUE(isShown("locked"));
  store_->setApplicationActive(true);
  click("unlock");
  owner_->decide(true);
  EXPECT_EQ(at<QPlainTextEdit>("note").toPlainText(), QStringLiteral("half a th"));
  EXPECT_EQ(shot("secret.png")->note, "");
}

TEST_F(InspectorLock, LockingClosesWhatStandsOpenOverTheForm) {
  click("unlock");
  owner_->decide(true);
  click("recognition");
  click("moreActions");
  ASSERT_TRUE(isShown("moreMenu"));
  store_->setApplicationActive(false);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(isThere("moreMenu"));
  EXPECT_FALSE(isThere("sourceEditor"));
}

TEST_F(InspectorLock, SwitchingTheProtectionOffShowsTheForm) {
  store_->settings().protectSensitive.set(false);
  EXPECT_TRUE(isShown("form"));
  store_->settings().protectSensitive.set(true);
  EXPECT_TRUE(isShown("locked"));
  EXPECT_FALSE(isThere("form"));
}

TEST_F(InspectorLock, AClickOnThePreviewOpensOnceTheOwnerHasAuthenticated) {
  click("preview");
  EXPECT_THAT(workspace_->files, IsEmpty());
  owner_->decide(true);
  EXPECT_THAT(workspace_->files, ElementsAre(shot("secret.png")->path));
}

TEST_F(InspectorLock, TheWarningNamesWhatWasFoundInLowerCase) {
  click("unlock");
  owner_->decide(true);
  EXPECT_TRUE(isShown("warning"));
  EXPECT_EQ(textOf("warningLabels"), "Looks like it contains password, email");
  show(addRead("plain.png", "nothing"));
  EXPECT_FALSE(isShown("warning"));
}

class InspectorPreview : public Testing::InspectorFixture {
 protected:
  [[nodiscard]] ShotPtr addPicture(const std::string& name, const std::vector<std::string>& sensitive) {
    Testing::writePicture(home_.desktop(name));
    store_->importFiles({home_.desktop(name)});
    store_->database().setOCR(shot(name)->id, "text", sensitive);
    store_->reload();
    return shot(name);
  }
  [[nodiscard]] bool hasImage() const { return !at<InspectorPicture>("preview").image().isNull(); }
};

TEST_F(InspectorPreview, ShowsThePictureAndOpensItOnAClick) {
  show(addPicture("view.png", {}));
  EXPECT_TRUE(waitUntil([this] { return hasImage(); }));
  EXPECT_EQ(at("preview").height(), 180);
  EXPECT_EQ(at("preview").toolTip(), QStringLiteral("Click to open"));
  click("preview");
  EXPECT_THAT(workspace_->files, ElementsAre(shot("view.png")->path));
}

TEST_F(InspectorPreview, OfAProtectedShotNoPictureIsTakenEvenWhereOneIsCached) {
  const auto secret = addPicture("secret.png", {"Password"});
  thumbs_.store(CompactImage(Testing::picture(64, 48)), secret->path);
  show(secret);
  EXPECT_FALSE(hasImage());
  click("unlock");
  owner_->decide(true);
  EXPECT_TRUE(hasImage());
  store_->setApplicationActive(false);
  EXPECT_FALSE(hasImage());
}

TEST_F(InspectorPreview, APictureThatComesLateIsNotShownForAnotherShot) {
  const auto first = addPicture("first.png", {});
  show(first);
  show(add("none.png"));
  EXPECT_TRUE(waitUntil([&] { return thumbs_.holds(first->path); }));
  EXPECT_FALSE(hasImage());
}

TEST_F(InspectorPreview, TheKeyboardOpensItToo) {
  show(addPicture("view.png", {}));
  QTest::keyClick(&at("preview"), Qt::Key_Space);
  EXPECT_THAT(workspace_->files, SizeIs(1));
}

}  // namespace
}  // namespace Nimbrel
