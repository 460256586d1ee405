#include "Views/Editor/EditorView.h"

#include "Support/Waiting.h"
#include "Views/Editor/EditorFixture.h"
#include "Views/Editor/LabelField.h"

#include <QTest>

#include <fstream>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::waitUntil;
using Kind = Annotation::Kind;

class EditorViewTest : public Testing::EditorFixture {};

TEST_F(EditorViewTest, OpensWithTheTextToolAndNoMarks) {
  makeShot();
  sheet_ = new EditorView(*store_, {.reader = reader_, .pasteboard = *pasteboard_}, shot_, &window_);
  sheet_->open();
  EXPECT_TRUE(sheet_->isLoading());
  EXPECT_TRUE(in<QWidget>(*sheet_, "editor.busy")->isVisible());
  ASSERT_TRUE(waitUntil([this] { return !sheet_->isLoading(); }));
  EXPECT_FALSE(in<QWidget>(*sheet_, "editor.busy")->isVisible());
  EXPECT_EQ(sheet_->width(), 860);
  EXPECT_EQ(sheet_->windowModality(), Qt::WindowModal);
  EXPECT_EQ(textOf("editor.hint"), "Click a line to copy it, or drag a box to copy everything inside.");
  EXPECT_EQ(textOf("editor.counter"), "0 marks");
  EXPECT_FALSE(in<QWidget>(*sheet_, "editor.note")->isVisible());
  EXPECT_EQ(sheet_->state().pixelSize(), QSizeF(400, 250));
  for (const auto* name :
       {"editor.coverSecrets", "editor.coverAllText", "editor.undo", "editor.clear", "editor.save"}) {
    EXPECT_FALSE(button(name)->isEnabled()) << name;
  }
  EXPECT_TRUE(button("editor.cancel")->isEnabled());
}

TEST_F(EditorViewTest, ReadsTheTextAfresh) {
  openWithText();
  EXPECT_THAT(reader_.requests,
              ElementsAre(Testing::FakePictureReader::Request{shot_->path, PictureReader::Wanted::Text}));
  EXPECT_THAT(sheet_->state().blocks(), SizeIs(3));
}

TEST_F(EditorViewTest, TheLabelFieldShowsWithItsToolAlone) {
  openSheet();
  auto* field = in<QLineEdit>(*sheet_, "editor.labelText");
  EXPECT_FALSE(field->isVisible());
  choose("Label");
  EXPECT_TRUE(field->isVisible());
  EXPECT_EQ(field->text(), QStringLiteral("Note"));
  EXPECT_EQ(field->accessibleName(), QStringLiteral("Label"));
  EXPECT_EQ(textOf("editor.hint"), "Type a label, then click where it should appear.");
  choose("Box");
  EXPECT_FALSE(field->isVisible());
}

TEST_F(EditorViewTest, InksAreChosenByTheirSwatches) {
  openSheet();
  auto* blue = in<QAbstractButton>(*sheet_, "editor.ink.Blue");
  EXPECT_EQ(blue->toolTip(), QStringLiteral("Blue"));
  QTest::mouseClick(blue, Qt::LeftButton);
  EXPECT_EQ(sheet_->state().colorIndex(), 2);
  EXPECT_FALSE(in<QAbstractButton>(*sheet_, "editor.ink.Red")->isChecked());
}

TEST_F(EditorViewTest, EachToolPlacesItsMarkByMouse) {
  openSheet();
  placeOneOfEach();
  EXPECT_THAT(kinds(), ElementsAre(Kind::redact, Kind::blur, Kind::box, Kind::arrow, Kind::highlight, Kind::step,
                                   Kind::label, Kind::crop));
  EXPECT_NEAR(items()[2].start.x(), 0.2, 1e-9);
  EXPECT_NEAR(items()[2].end.y(), 0.7, 1e-9);
  EXPECT_EQ(items()[6].text, "Note");
  EXPECT_EQ(textOf("editor.counter"), "8 marks");
}

TEST_F(EditorViewTest, TextIsCopiedByClickAndByDrag) {
  openWithText();
  click({0.2, 0.13});
  EXPECT_EQ(pasteboard_->text, "Dear all");
  EXPECT_EQ(textOf("editor.note"), "Copied 8 characters");
  drag({0.05, 0.18}, {0.7, 0.4});
  EXPECT_EQ(pasteboard_->text, "password: hunter2butlonger\nSee you");
  drag({0.7, 0.7}, {0.9, 0.9});
  EXPECT_EQ(textOf("editor.note"), "No text there");
}

TEST_F(EditorViewTest, CoverActionsCoverWhatTheySay) {
  openWithText();
  push("editor.coverSecrets");
  EXPECT_EQ(textOf("editor.counter"), "1 mark");
  push("editor.coverAllText");
  push("editor.coverAllText");
  EXPECT_EQ(textOf("editor.counter"), "3 marks");
}

TEST_F(EditorViewTest, SecretsAreCoveredOnlyInAShotThatHoldsSome) {
  makeShot();
  setBlocks({{.text = "password: hunter2butlonger", .rect = {0.1, 0.2, 0.5, 0.06}}});
  openSheet();
  EXPECT_FALSE(button("editor.coverSecrets")->isEnabled());
  EXPECT_TRUE(button("editor.coverAllText")->isEnabled());
}

TEST_F(EditorViewTest, UndoRedoAndClearHaveTheirButtonsAndKeys) {
  openSheet();
  choose("Step");
  for (const double x : {0.2, 0.4, 0.6}) click({x, 0.5});
  push("editor.undo");
  EXPECT_THAT(items(), SizeIs(2));
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_THAT(items(), SizeIs(1));
  press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  press(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_THAT(items(), SizeIs(3));
  push("editor.clear");
  EXPECT_THAT(items(), IsEmpty());
  EXPECT_FALSE(button("editor.undo")->isEnabled());
}

TEST_F(EditorViewTest, KeysBelongToAFieldThatHasTheFocus) {
  openSheet();
  choose("Label");
  click({0.3, 0.3});
  auto* field = in<QLineEdit>(*sheet_, "editor.labelText");
  field->setFocus();
  field->selectAll();
  QTest::keyClicks(field, QStringLiteral("New"));
  press(Qt::Key_Left);
  press(Qt::Key_Delete);
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_THAT(items(), SizeIs(1));
  EXPECT_NEAR(items().front().start.x(), 0.3, 1e-9);
}

TEST_F(EditorViewTest, ArrowsNudgeTheLastMarkAndDeleteRemovesIt) {
  openSheet();
  choose("Step");
  click({0.5, 0.5});
  press(Qt::Key_Right);
  press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_NEAR(items().back().start.x(), 0.5 + 1.0 / 400, 1e-9);
  EXPECT_NEAR(items().back().start.y(), 0.5 - 10.0 / 250, 1e-9);
  press(Qt::Key_Delete);
  EXPECT_THAT(items(), IsEmpty());
}

TEST_F(EditorViewTest, ButtonsThatAreClickedLeaveTheKeysToTheCanvas) {
  openWithText();
  QTest::mouseClick(button("editor.coverAllText"), Qt::LeftButton);
  press(Qt::Key_Right);
  EXPECT_NEAR(items().back().start.x(), 0.1 + 1.0 / 400, 1e-9);
}

TEST_F(EditorViewTest, AClickOnALabelEditsItAndPlacesNone) {
  openSheet();
  choose("Label");
  click({0.3, 0.3});
  click({0.31, 0.32});
  ASSERT_THAT(items(), SizeIs(1));
  auto* field = in<QLineEdit>(*sheet_, "editor.labelOnCanvas");
  EXPECT_EQ(field->text(), QStringLiteral("Note"));
  QTest::keyClicks(field, QStringLiteral("Other words"));
  QTest::keyClick(field, Qt::Key_Return);
  ASSERT_FALSE(sheet_.isNull());
  EXPECT_FALSE(sheet_->isSaving());
  EXPECT_EQ(items().back().text, "Other words");
  EXPECT_EQ(sheet_->state().labelText(), "Note");
  EXPECT_EQ(sheet_->focusWidget(), &sheet_->canvas());
  push("editor.undo");
  EXPECT_THAT(items(), IsEmpty());
}

TEST_F(EditorViewTest, EscapeLeavesALabelAsItWas) {
  openSheet();
  choose("Label");
  click({0.3, 0.3});
  click({0.31, 0.32});
  auto* field = in<QLineEdit>(*sheet_, "editor.labelOnCanvas");
  QTest::keyClicks(field, QStringLiteral("Other words"));
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_EQ(items().back().text, "Note");
  EXPECT_TRUE(sheet_->isVisible());
}

TEST_F(EditorViewTest, ALabelIsNotLeftWithoutWords) {
  openSheet();
  choose("Label");
  click({0.3, 0.3});
  click({0.31, 0.32});
  auto* field = in<QLineEdit>(*sheet_, "editor.labelOnCanvas");
  field->clear();
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(items().back().text, "Note");
}

TEST_F(EditorViewTest, EscapeClosesIt) {
  openSheet();
  choose("Step");
  click({0.5, 0.5});
  press(Qt::Key_Escape);
  EXPECT_TRUE(awaitClosed());
  EXPECT_EQ(store_->status(), "");
}

TEST_F(EditorViewTest, APictureThatCannotBeDecodedIsReadAllTheSameButNotSaved) {
  makeShot();
  std::ofstream(shot_->path) << "no picture";
  setBlocks({{.text = "Dear all", .rect = {0.1, 0.1, 0.3, 0.06}}});
  openSheet();
  choose("Step");
  click({0.5, 0.5});
  EXPECT_THAT(items(), IsEmpty());
  push("editor.coverAllText");
  EXPECT_THAT(items(), SizeIs(1));
  EXPECT_FALSE(button("editor.save")->isEnabled());
}

TEST_F(EditorViewTest, WithoutAReaderThereIsNoText) {
  reader_.isMissing = true;
  openSheet();
  EXPECT_FALSE(button("editor.coverAllText")->isEnabled());
}

TEST_F(EditorViewTest, AProtectedShotIsNotOpened) {
  makeShot({.name = "Shot.png", .sensitive = {"Password"}});
  ASSERT_TRUE(store_->isProtected(*shot_));
  EditorTarget target(*store_);
  EXPECT_EQ(makeEditor(*store_, {.reader = reader_, .pasteboard = *pasteboard_}, target, &window_), nullptr);
  target.setShot(shot_);
  EXPECT_EQ(makeEditor(*store_, {.reader = reader_, .pasteboard = *pasteboard_}, target, &window_), nullptr);
}

}  // namespace
}  // namespace Nimbrel
