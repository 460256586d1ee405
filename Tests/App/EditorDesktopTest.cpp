// The editor under a hand and a keyboard, and other programs that come before it.

#include "App/DesktopFixture.h"

#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"
#include "Views/Editor/EditorTool.h"
#include "Views/Editor/EditorView.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QSignalSpy>

#include <functional>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::waitUntil;

class EditorDesktopTest : public Testing::DesktopFixture {
 protected:
  EditorDesktopTest() {
    addShot("Screenshot open.png", "A recipe for soup");
    addShot("Screenshot secret.png", "the key is under the mat", {"Password"});
    openWindow();
  }

  [[nodiscard]] EditorView& editor() const { return part<EditorView>("editorSheet"); }
  [[nodiscard]] bool isOpen() const { return isShown(QStringLiteral("editorSheet")); }
  [[nodiscard]] const std::vector<Annotation>& items() const { return editor().state().items(); }
  [[nodiscard]] double zoom() const { return editor().canvas().canvasGeometry().zoom; }
  [[nodiscard]] bool comesToHave(std::size_t marks) const {
    return waitUntil([&] { return items().size() == marks; });
  }

  /// As its button in the details does.
  void openEditor(const std::string& name) {
    clickShot(name);
    if (store().isProtected(*shot(name))) unlock(name);
    clickPart("inspector.edit");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor()));
    ASSERT_TRUE(waitUntil([this] { return !editor().isLoading(); }));
  }
  using DesktopFixture::pointAt;
  void pointAt(const char* name) const {
    const auto& widget = part(name);
    pointAt(widget, [&] { return widget.rect().center(); });
  }
  void clickOn(const char* name) const {
    pointAt(name);
    act(QStringLiteral("click 1"));
  }
  /// A point of the picture, 0 to 1.
  void pointAt(QPointF point) const {
    auto& canvas = editor().canvas();
    pointAt(*canvas.viewport(), [&] {
      const auto geometry = canvas.canvasGeometry();
      const auto fitted = geometry.fitted();
      return geometry.toCanvas({point.x() * fitted.width(), point.y() * fitted.height()}).toPoint();
    });
  }
  void clickAt(QPointF point) const {
    pointAt(point);
    act(QStringLiteral("click 1"));
  }
  void drag(QPointF from, QPointF to) const {
    pointAt(from);
    act(QStringLiteral("mousedown 1"));
    pointAt((from + to) / 2);
    pointAt(to);
    act(QStringLiteral("mouseup 1"));
  }
  static void key(const char* name) { act(QStringLiteral("key ") + QLatin1String(name)); }
};

TEST_F(EditorDesktopTest, AHandPlacesMarksAndKeysMoveThem) {
  openEditor("Screenshot open.png");
  clickOn("editor.tool.Box");
  ASSERT_TRUE(waitUntil([this] { return EditorTools::at(editor().state().tool()).kind() == Annotation::Kind::box; }));
  drag({0.2, 0.3}, {0.6, 0.7});
  ASSERT_TRUE(comesToHave(1));
  EXPECT_EQ(items().front().kind, Annotation::Kind::box);
  const auto placed = items().front().start;
  EXPECT_NEAR(placed.x(), 0.2, 0.005);
  EXPECT_NEAR(placed.y(), 0.3, 0.005);
  key("Right");
  ASSERT_TRUE(waitUntil([&] { return items().front().start.x() > placed.x(); }));
  EXPECT_NEAR(items().front().start.x() - placed.x(), 1.0 / 320, 1e-9);
  key("shift+Down");
  ASSERT_TRUE(waitUntil([&] { return items().front().start.y() > placed.y(); }));
  EXPECT_NEAR(items().front().start.y() - placed.y(), 10.0 / 200, 1e-9);
  key("ctrl+z");
  ASSERT_TRUE(comesToHave(0));
  key("ctrl+shift+z");
  ASSERT_TRUE(comesToHave(1));
  key("Delete");
  EXPECT_TRUE(comesToHave(0));
}

TEST_F(EditorDesktopTest, TheWheelZoomsWithTheControlKeyAlone) {
  openEditor("Screenshot open.png");
  pointAt({0.5, 0.5});
  act(QStringLiteral("keydown ctrl click 4 keyup ctrl"));
  ASSERT_TRUE(waitUntil([this] { return zoom() > 1; }));
  EXPECT_NEAR(zoom(), 1.25, 1e-9);
  key("ctrl+plus");
  ASSERT_TRUE(waitUntil([this] { return zoom() > 1.3; }));
  clickOn("editor.tool.Arrow");
  drag({0.4, 0.4}, {0.6, 0.5});
  ASSERT_TRUE(comesToHave(1));
  EXPECT_NEAR(items().front().end.x(), 0.6, 0.005);
  key("ctrl+0");
  EXPECT_TRUE(waitUntil([this] { return zoom() == 1; }));
}

TEST_F(EditorDesktopTest, KeysGoToTheFieldThatIsWrittenIn) {
  openEditor("Screenshot open.png");
  clickOn("editor.tool.Label");
  clickAt({0.5, 0.5});
  ASSERT_TRUE(comesToHave(1));
  const auto label = items().front();
  auto& field = part<QLineEdit>("editor.labelText");
  clickOn("editor.labelText");
  ASSERT_TRUE(waitUntil([&] { return field.hasFocus(); }));
  key("ctrl+a");
  act(QStringLiteral("type Wxyz"));
  key("BackSpace");
  key("Left");
  key("Delete");
  ASSERT_TRUE(waitUntil([&] { return field.text() == QStringLiteral("Wx"); }));
  key("ctrl+z");
  ASSERT_TRUE(waitUntil([&] { return field.text() != QStringLiteral("Wx"); }));
  key("ctrl+y");
  ASSERT_TRUE(waitUntil([&] { return field.text() == QStringLiteral("Wx"); }));
  EXPECT_THAT(items(), ::testing::ElementsAre(label));
  EXPECT_EQ(editor().state().labelText(), "Wx");
}

TEST_F(EditorDesktopTest, ReturnSavesAndTheWindowHasTheKeysAgain) {
  openEditor("Screenshot open.png");
  clickOn("editor.tool.Black Bar");
  drag({0.2, 0.3}, {0.6, 0.7});
  ASSERT_TRUE(comesToHave(1));
  key("Return");
  ASSERT_TRUE(waitUntil([this] { return !isOpen(); }));
  EXPECT_EQ(store().status(), "Saved Screenshot open redacted.png");
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
  EXPECT_TRUE(catalogued("Screenshot open redacted.png").has_value());
}

TEST_F(EditorDesktopTest, EscapeClosesIt) {
  openEditor("Screenshot open.png");
  key("Escape");
  EXPECT_TRUE(waitUntil([this] { return !isOpen(); }));
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
}

TEST_F(EditorDesktopTest, AnotherProgramInFrontClosesItOverASensitiveShot) {
  openEditor("Screenshot secret.png");
  ASSERT_TRUE(staysUnlocked()) << "to be in the editor is no leaving";
  const Testing::DesktopClient other({Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "other/Other"});
  Testing::bringToFront("Other");
  EXPECT_TRUE(locks());
  EXPECT_TRUE(waitUntil([this] { return !isOpen(); }));
}

TEST_F(EditorDesktopTest, AnotherProgramInFrontLeavesTheMarksOnAnyOtherShot) {
  openEditor("Screenshot open.png");
  clickOn("editor.tool.Step");
  clickAt({0.5, 0.5});
  ASSERT_TRUE(comesToHave(1));
  const QSignalSpy locked(&store(), &Store::sensitiveLocked);
  const Testing::DesktopClient other({Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "other/Other"});
  Testing::bringToFront("Other");
  ASSERT_TRUE(waitUntil([&] { return locked.count() > 0; }));
  EXPECT_TRUE(isOpen());
  EXPECT_THAT(items(), SizeIs(1));
}

}  // namespace
}  // namespace Nimbrel
