// What is opened from the companion, in windows of their own.

#include "App/CompanionFixture.h"

#include "Support/Movies.h"
#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Editor/EditorView.h"
#include "Views/Recording/RecordingToolsView.h"

#include <QApplication>
#include <QPointer>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class CompanionWindowsTest : public Testing::CompanionFixture {
 protected:
  /// The shown window of that kind.
  template <class Window>
  [[nodiscard]] static Window* shown() {
    for (auto* widget : QApplication::topLevelWidgets()) {
      auto* window = qobject_cast<Window*>(widget);
      if (window != nullptr && window->isVisible()) return window;
    }
    return nullptr;
  }
  void setLastRecording(const char* name) {
    const auto path = home_.desktop(name);
    Testing::MadeMovie movie;
    movie.times = {0, 0.1, 0.2};
    Testing::writeMovie(path, movie);
    store_->setLastRecordingURL(path);
  }
  [[nodiscard]] bool wasBroughtToFront(const QWidget& window) const {
    return !activation_->brought.empty() && activation_->brought.back().window == window.windowHandle();
  }
  ShotPtr addPicture(const char* name) {
    const auto path = home_.desktop(name);
    Testing::writePicture(path, 40, 30, 1);
    store_->importFiles({path});
    return Testing::shotNamed(*store_, name);
  }
};

TEST_F(CompanionWindowsTest, TheToolsOfARecordingAreAWindowOfTheirOwnThatOutlivesThePanel) {
  setLastRecording("Recording.mov");
  openPanel();
  clickPart("panel.editRecording");
  const QPointer tools = shown<RecordingToolsView>();
  ASSERT_NE(tools, nullptr);
  EXPECT_FALSE(tools->isModal());
  EXPECT_EQ(tools->parentWidget(), nullptr);
  EXPECT_TRUE(wasBroughtToFront(*tools));
  EXPECT_FALSE(panel().isVisible());
  Q_EMIT store_->hidingRequested();
  EXPECT_FALSE(tools->isVisible());
  Q_EMIT store_->unhidingRequested();
  EXPECT_TRUE(tools->isVisible());
  tools->reject();
  EXPECT_FALSE(store_->showRecordingTools());
  EXPECT_TRUE(waitUntil([&] { return tools == nullptr; }));
}

TEST_F(CompanionWindowsTest, ToolsThatAreOpenAlreadyComeToTheFront) {
  setLastRecording("Recording.mov");
  openPanel();
  clickPart("panel.editRecording");
  const QPointer tools = shown<RecordingToolsView>();
  ASSERT_NE(tools, nullptr);
  openPanel();
  ASSERT_FALSE(wasBroughtToFront(*tools));
  clickPart("panel.editRecording");
  EXPECT_EQ(shown<RecordingToolsView>(), tools);
  EXPECT_TRUE(wasBroughtToFront(*tools));
  EXPECT_FALSE(panel().isVisible());
}

TEST_F(CompanionWindowsTest, ToolsOfAFormerRecordingGiveWayToThoseOfTheLast) {
  setLastRecording("Recording.mov");
  openPanel();
  clickPart("panel.editRecording");
  const QPointer former = shown<RecordingToolsView>();
  ASSERT_NE(former, nullptr);
  setLastRecording("Later.mov");
  EXPECT_TRUE(former->isVisible()) << "nobody has asked for others yet";
  openPanel();
  clickPart("panel.editRecording");
  ASSERT_TRUE(waitUntil([&] { return former == nullptr; }));
  auto* tools = shown<RecordingToolsView>();
  ASSERT_NE(tools, nullptr);
  EXPECT_EQ(tools->findChild<ElidedLabel*>(QStringLiteral("recordingTools.fileName"))->fullText(),
            QStringLiteral("Later.mov"));
  EXPECT_TRUE(store_->showRecordingTools());
}

TEST_F(CompanionWindowsTest, AShotIsEditedInAWindowOfItsOwnThatOutlivesThePanel) {
  const auto shot = addPicture("a.png");
  openPanel();
  store_->requestEdit(shot);
  const QPointer editor = shown<EditorView>();
  ASSERT_NE(editor, nullptr);
  EXPECT_FALSE(editor->isModal());
  EXPECT_EQ(editor->parentWidget(), nullptr);
  EXPECT_FALSE(panel().isVisible());
  openPanel();
  store_->requestEdit(shot);
  EXPECT_EQ(shown<EditorView>(), editor) << "the same shot is not opened twice";
  EXPECT_TRUE(wasBroughtToFront(*editor));
  editor->reject();
  deleteClosed();
  EXPECT_EQ(editor, nullptr);
  store_->requestEdit(shot);
  EXPECT_NE(shown<EditorView>(), nullptr) << "it can be opened again";
}

TEST_F(CompanionWindowsTest, TheEditorOfASensitiveShotClosesWhenTheUserLeaves) {
  addSecret();
  openPanel();
  store_->requestEdit(Testing::shotNamed(*store_, "secret.png"));
  EXPECT_EQ(shown<EditorView>(), nullptr) << "before the owner has said so";
  owner_->decide(true);
  ASSERT_NE(shown<EditorView>(), nullptr);
  store_->lockSensitive();
  EXPECT_EQ(shown<EditorView>(), nullptr);
}

TEST_F(CompanionWindowsTest, WithoutARecordingThereIsNothingToEdit) {
  store_->setShowRecordingTools(true);
  EXPECT_FALSE(store_->showRecordingTools());
  EXPECT_EQ(shown<RecordingToolsView>(), nullptr);
}

}  // namespace
}  // namespace Nimbrel
