// What comes up over the work in other programs while the companion runs: the shelf and quick find.

#include "App/CompanionFixture.h"

#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Editor/EditorView.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QPointer>
#include <QTimer>

#include <string>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using Testing::waitUntil;

class CompanionShelfTest : public Testing::CompanionFixture {
 protected:
  [[nodiscard]] static EditorView* editor() {
    for (auto* widget : QApplication::topLevelWidgets()) {
      if (auto* view = qobject_cast<EditorView*>(widget)) return view;
    }
    return nullptr;
  }
  /// A picture in the catalogue, of which nothing is known to be sensitive.
  ShotPtr addRead(const std::string& name) {
    const auto path = home_.desktop(name);
    Testing::writePicture(path, 40, 30, 1);
    store_->importFiles({path});
    store_->database().setOCR(Testing::shotNamed(*store_, name)->id, "a recipe for soup", {});
    store_->reload();
    return Testing::shotNamed(*store_, name);
  }
  void clickOnShelf(const char* name) {
    auto* button = process_->shelf().window()->findChild<QPushButton*>(QLatin1String(name));
    ASSERT_NE(button, nullptr) << name;
    QTest::mouseClick(button, Qt::LeftButton);
  }
};

TEST_F(CompanionShelfTest, EditOnTheShelfOpensTheEditorInAWindowOfItsOwn) {
  Q_EMIT store_->freshShotArrived(addRead("shot.png"));
  ASSERT_TRUE(process_->shelf().isVisible());
  openPanel();
  clickOnShelf("shelf.edit");
  EXPECT_FALSE(process_->shelf().isVisible());
  EXPECT_FALSE(panel().isVisible());
  ASSERT_NE(editor(), nullptr);
  EXPECT_TRUE(editor()->isVisible());
  EXPECT_FALSE(editor()->isModal());
  EXPECT_EQ(editor()->parentWidget(), nullptr);
  ASSERT_FALSE(activation_->brought.empty());
  EXPECT_EQ(activation_->brought.back().window, editor()->windowHandle());
  openPanel();
  tray_.activate({});
  EXPECT_TRUE(editor()->isVisible()) << "the panel comes and goes without it";
  EXPECT_THAT(opened_, IsEmpty()) << "the application is not needed for that";
  editor()->reject();
  deleteClosed();
  EXPECT_EQ(editor(), nullptr);
}

TEST_F(CompanionShelfTest, AnotherShotTakesTheEditorOver) {
  const auto first = addRead("first.png");
  const auto second = addRead("second.png");
  store_->requestEdit(first);
  const QPointer<EditorView> former = editor();
  ASSERT_FALSE(former.isNull());
  store_->requestEdit(second);
  deleteClosed();
  EXPECT_TRUE(former.isNull());
  ASSERT_NE(editor(), nullptr);
  EXPECT_TRUE(editor()->isVisible());
  store_->requestEdit(second);
  EXPECT_EQ(activation_->brought.size(), 3U) << "asked for again, it comes to the front";
}

TEST_F(CompanionShelfTest, TheOwnerIsAskedBeforeTheEditorAndLeavingClosesIt) {
  addSecret();
  store_->requestEdit(Testing::shotNamed(*store_, "secret.png"));
  EXPECT_EQ(editor(), nullptr);
  ASSERT_TRUE(owner_->isAsked());
  owner_->decide(false);
  EXPECT_EQ(editor(), nullptr);
  store_->requestEdit(Testing::shotNamed(*store_, "secret.png"));
  owner_->decide(true);
  ASSERT_NE(editor(), nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(editor()));
  Q_EMIT qApp->focusWindowChanged(nullptr);
  EXPECT_TRUE(waitUntil([this] { return editor() == nullptr; }));
}

TEST_F(CompanionShelfTest, AScreenshotThatAScanFindsBringsUpTheShelf) {
  store_->scan();
  const auto path = home_.desktop("Screenshot 1.png");
  Testing::writePicture(path, 40, 30, 1);
  Testing::setModificationTime(path, secondsSince1970(home_.now) - 1);
  store_->scan();
  ASSERT_TRUE(process_->shelf().isVisible());
  EXPECT_FALSE(panel().isVisible());
}

TEST_F(CompanionShelfTest, WhatQuitsShowsNeitherShelfNorQuickFind) {
  const auto shot = addRead("shot.png");
  QTimer::singleShot(0, process_.get(), &CompanionProcess::quit);
  EXPECT_EQ(QApplication::exec(), 0);
  Q_EMIT store_->freshShotArrived(shot);
  Q_EMIT store_->quickFindRequested();
  EXPECT_FALSE(process_->shelf().isVisible());
  EXPECT_FALSE(process_->quickFind().isVisible());
}

TEST_F(CompanionShelfTest, ACaptureFromThePanelBringsUpTheShelf) {
  openPanel();
  clickPart("panel.area");
  ASSERT_TRUE(waitUntil([this] { return !tool_->launched.empty(); }));
  Testing::writePicture(tool_->path(), 40, 30, 1);
  tool_->end(0);
  EXPECT_TRUE(process_->shelf().isVisible());
}

TEST_F(CompanionShelfTest, TheHotkeyAndTheLauncherOpenQuickFind) {
  Q_EMIT store_->quickFindRequested();
  EXPECT_TRUE(process_->quickFind().isVisible());
  Q_EMIT store_->quickFindRequested();
  EXPECT_FALSE(process_->quickFind().isVisible());
  process_->answer({.kind = StartRequest::Kind::Action, .action = "find", .activationToken = "token"});
  EXPECT_TRUE(process_->quickFind().isVisible());
  EXPECT_FALSE(panel().isVisible());
  ASSERT_FALSE(activation_->brought.empty());
  EXPECT_EQ(activation_->brought.back().token, "token");
}

TEST_F(CompanionShelfTest, QuickFindStaysAwayAfterACapture) {
  Q_EMIT store_->quickFindRequested();
  Q_EMIT store_->hidingRequested();
  EXPECT_FALSE(process_->quickFind().isVisible());
  Q_EMIT store_->unhidingRequested();
  EXPECT_FALSE(process_->quickFind().isVisible());
}

}  // namespace
}  // namespace Nimbrel
