#include "Views/Inspector/InspectorFixture.h"
#include "Views/Shared/TextStyles.h"

#include <QPlainTextEdit>

namespace Nimbrel {
namespace {

class InspectorDraftsTest : public Testing::InspectorFixture {
 protected:
  InspectorDraftsTest() {
    one_ = addRead("one.png", "first text");
    two_ = addRead("two.png", "second text");
    store_->database().setNote(two_->id, "of the second");
    store_->reload();
    show(shot("one.png"));
  }
  [[nodiscard]] QPlainTextEdit& note() const { return at<QPlainTextEdit>("note"); }
  [[nodiscard]] std::string savedNote(std::string_view name) const {
    return store_->database().shot(shot(name)->id)->note;
  }

  ShotPtr one_;
  ShotPtr two_;
};

TEST_F(InspectorDraftsTest, AnotherShotDropsANameThatWasNotHandedIn) {
  type("name", QStringLiteral("other"));
  show(shot("two.png"));
  EXPECT_EQ(field("name").text(), QStringLiteral("two.png"));
  show(shot("one.png"));
  EXPECT_EQ(field("name").text(), QStringLiteral("one.png"));
}

TEST_F(InspectorDraftsTest, AnUnsavedNoteThatNoDisappearanceFollowedIsReplacedByTheNextShots) {
  QTest::keyClicks(&note(), QStringLiteral("lost"));
  show(shot("two.png"));
  EXPECT_EQ(note().toPlainText(), QStringLiteral("of the second"));
  EXPECT_EQ(savedNote("one.png"), "");
  show(shot("one.png"));
  EXPECT_EQ(note().toPlainText(), QString());
}

TEST_F(InspectorDraftsTest, AnUnsavedNoteIsSavedWhenTheViewIsTornDown) {
  QTest::keyClicks(&note(), QStringLiteral("kept"));
  view_.reset();
  EXPECT_EQ(savedNote("one.png"), "kept");
  EXPECT_EQ(shot("one.png")->note, "kept") << "the rows were read again";
}

TEST_F(InspectorDraftsTest, AnUnsavedNoteIsSavedWhenTheViewIsHidden) {
  QTest::keyClicks(&note(), QStringLiteral("kept"));
  view_->hide();
  EXPECT_EQ(savedNote("one.png"), "kept");
  view_->show();
  EXPECT_EQ(note().toPlainText(), QStringLiteral("kept"));
}

TEST_F(InspectorDraftsTest, ReappearingDropsANameThatWasNotHandedIn) {
  type("name", QStringLiteral("other"));
  view_->hide();
  view_->show();
  EXPECT_EQ(field("name").text(), QStringLiteral("one.png"));
}

TEST_F(InspectorDraftsTest, ANoteThatWasNotChangedIsNotWritten) {
  const auto changes = store_->database().ownChanges();
  view_->hide();
  EXPECT_EQ(store_->database().ownChanges(), changes);
}

TEST_F(InspectorDraftsTest, TheNoteOfAShotThatIsGoneIsNotGivenToTheNextOneOfItsId) {
  show(shot("two.png"));
  note().selectAll();
  QTest::keyClicks(&note(), QStringLiteral("for the second"));
  store_->database().remove(two_->id, Database::IgnorePath::No);
  home_.now += Seconds(10);
  store_->importFiles({home_.addFile(home_.desktop("new.png"))});
  ASSERT_EQ(shot("new.png")->id, two_->id);
  view_->hide();
  EXPECT_EQ(savedNote("new.png"), "");
}

TEST_F(InspectorDraftsTest, ANewShotUnderAnOldIdIsAnotherShot) {
  show(shot("two.png"));
  type("name", QStringLiteral("other"));
  store_->database().remove(two_->id, Database::IgnorePath::No);
  home_.now += Seconds(10);
  show(add("new.png"));
  EXPECT_EQ(field("name").text(), QStringLiteral("new.png"));
}

TEST_F(InspectorDraftsTest, ReturnSavesTheNoteAndShiftReturnBeginsALine) {
  QTest::keyClicks(&note(), QStringLiteral("first"));
  QTest::keyClick(&note(), Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClicks(&note(), QStringLiteral("second"));
  EXPECT_EQ(savedNote("one.png"), "");
  QTest::keyClick(&note(), Qt::Key_Return);
  EXPECT_EQ(savedNote("one.png"), "first\nsecond");
  EXPECT_EQ(note().toPlainText(), QStringLiteral("first\nsecond"));
}

TEST_F(InspectorDraftsTest, WhatTheUserHasNotTouchedFollowsTheRow) {
  store_->database().setNote(one_->id, "written elsewhere");
  store_->rename(*shot("one.png"), "renamed.png");
  EXPECT_EQ(note().toPlainText(), QStringLiteral("written elsewhere"));
  EXPECT_EQ(field("name").text(), QStringLiteral("renamed.png"));
}

TEST_F(InspectorDraftsTest, WhatTheUserIsWritingStaysWhenTheRowChanges) {
  QTest::keyClicks(&note(), QStringLiteral("mine"));
  type("name", QStringLiteral("other"));
  store_->database().setNote(one_->id, "written elsewhere");
  store_->database().setFavorite(one_->id, true);
  store_->reload();
  EXPECT_EQ(note().toPlainText(), QStringLiteral("mine"));
  EXPECT_EQ(field("name").text(), QStringLiteral("other"));
}

TEST_F(InspectorDraftsTest, NoBreakSpacesOfANoteStay) {
  store_->database().setNote(one_->id, "10\u00A0km");
  store_->reload();
  QTest::keyClick(&note(), Qt::Key_End);
  QTest::keyClicks(&note(), QStringLiteral("!"));
  QTest::keyClick(&note(), Qt::Key_Return);
  EXPECT_EQ(savedNote("one.png"), "10\u00A0km!");
}

TEST_F(InspectorDraftsTest, LineBreaksOfOtherSystemsStayInANoteThatIsNotEdited) {
  store_->database().setNote(one_->id, "a\r\nb");
  store_->reload();
  store_->database().setFavorite(one_->id, true);
  store_->reload();
  view_->hide();
  EXPECT_EQ(savedNote("one.png"), "a\r\nb");
}

TEST_F(InspectorDraftsTest, TheNoteFieldShowsTwoToSixLines) {
  const auto two = note().height();
  note().setPlainText(QStringLiteral("1\n2"));
  EXPECT_EQ(note().height(), two);
  note().setPlainText(QStringLiteral("1\n2\n3\n4\n5\n6"));
  const auto six = note().height();
  EXPECT_EQ(six - two, 4 * lineHeight(TextStyle::Body));
  note().setPlainText(QStringLiteral("1\n2\n3\n4\n5\n6\n7\n8\n9"));
  EXPECT_EQ(note().height(), six);
}

}  // namespace
}  // namespace Nimbrel
