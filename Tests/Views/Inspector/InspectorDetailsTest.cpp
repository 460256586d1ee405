#include "Foundation/Formats.h"

#include "Views/Inspector/InspectorFixture.h"
#include "Views/Shared/ElidedLabel.h"

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::StartsWith;

class InspectorDetails : public Testing::InspectorFixture {
 protected:
  InspectorDetails() { show(add("one.png")); }
  [[nodiscard]] std::string shownName() const { return shot("one.png")->shownName; }
  [[nodiscard]] std::string linkText() const { return at<QAbstractButton>("recognition").text().toStdString(); }
  /// The popover as it is seen, and not while it waits to be deleted.
  [[nodiscard]] bool isEditorOpen() const { return isShown("sourceEditor"); }
};

TEST_F(InspectorDetails, TheRowsTellWhatIsKnown) {
  EXPECT_EQ(field("name").text(), QStringLiteral("one.png"));
  EXPECT_EQ(textOf("shows"), "Unrecognized application");
  EXPECT_EQ(textOf("kind"), "Image");
  EXPECT_EQ(textOf("size"), "10 bytes");
  EXPECT_EQ(textOf("where"), "Inbox");
  EXPECT_EQ(at<ElidedLabel>("taken").fullText().toStdString(), Formats::mediumDateShortTime(shot("one.png")->date));
}

TEST_F(InspectorDetails, TheApplicationThatAShotShowsIsNamed) {
  store_->database().setApp(shot("one.png")->id, "Vault", "", Database::Trusted::Yes);
  store_->reload();
  EXPECT_EQ(textOf("shows"), "Vault");
}

TEST_F(InspectorDetails, ReturnRenamesTheFile) {
  type("name", QStringLiteral("other"));
  EXPECT_EQ(shot("one.png")->name, "one.png");
  submit("name");
  EXPECT_TRUE(std::filesystem::exists(home_.desktop("other.png")));
  EXPECT_EQ(field("name").text(), QStringLiteral("other.png")) << "with the extension that it kept";
}

TEST_F(InspectorDetails, ANameThatCannotBeLeavesTheDraftAndSaysWhy) {
  type("name", QStringLiteral("a/b"));
  submit("name");
  EXPECT_THAT(store_->status(), StartsWith("Rename failed: "));
  EXPECT_EQ(field("name").text(), QStringLiteral("a/b"));
  EXPECT_TRUE(std::filesystem::exists(home_.desktop("one.png")));
}

TEST_F(InspectorDetails, ReturnInANameOfStrayBytesThatWasNotEditedLeavesTheFileAlone) {
  const std::string name = "\xFFstray.png";
  show(add(name));
  submit("name");
  EXPECT_TRUE(std::filesystem::exists(home_.desktop(name)));
  EXPECT_EQ(store_->status(), "Imported 1");
}

TEST_F(InspectorDetails, TheEditorIsForTheNameThatTheUserGaveLast) {
  EXPECT_EQ(linkText(), "Change…");
  click("recognition");
  ASSERT_TRUE(isEditorOpen());
  EXPECT_EQ(at("sourceEditor").width(), 340);
  EXPECT_EQ(field("source.field").text(), QString());
  type("source.field", QStringLiteral("  Vault "));
  click("source.save");
  EXPECT_EQ(shownName(), "Vault");
  EXPECT_FALSE(isEditorOpen());
  EXPECT_EQ(linkText(), "Edit Override…");
  EXPECT_EQ(textOf("shows"), "Vault");
  click("recognition");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(field("source.field").text(), QStringLiteral("Vault"));
}

TEST_F(InspectorDetails, BlanksAloneSaveNothingAndLeaveTheEditorOpen) {
  click("recognition");
  EXPECT_FALSE(at("source.save").isEnabled());
  type("source.field", QStringLiteral("   "));
  EXPECT_FALSE(at("source.save").isEnabled());
  submit("source.field");
  EXPECT_TRUE(isEditorOpen());
  EXPECT_EQ(shownName(), "");
}

TEST_F(InspectorDetails, ReturnInTheEditorSaves) {
  click("recognition");
  type("source.field", QStringLiteral("Vault"));
  submit("source.field");
  EXPECT_EQ(shownName(), "Vault");
  EXPECT_FALSE(isEditorOpen());
}

TEST_F(InspectorDetails, AutomaticDetectionTakesTheNameAway) {
  store_->database().setShownName(shot("one.png")->id, "Vault");
  store_->reload();
  EXPECT_EQ(linkText(), "Edit Override…");
  click("recognition");
  click("source.automatic");
  EXPECT_EQ(shownName(), "");
  EXPECT_FALSE(isEditorOpen());
  EXPECT_EQ(linkText(), "Change…");
}

TEST_F(InspectorDetails, CancelAndEscapeCloseTheEditorAndSaveNothing) {
  click("recognition");
  type("source.field", QStringLiteral("Vault"));
  click("source.cancel");
  EXPECT_FALSE(isEditorOpen());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  click("recognition");
  QTest::keyClick(&field("source.field"), Qt::Key_Escape);
  EXPECT_FALSE(isEditorOpen());
  EXPECT_EQ(shownName(), "");
}

TEST_F(InspectorDetails, AnotherShotClosesTheEditor) {
  click("recognition");
  show(add("two.png"));
  EXPECT_FALSE(isEditorOpen());
}

}  // namespace
}  // namespace Nimbrel
