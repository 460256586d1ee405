// The shelf on a real display, over another program.

#include "App/FloatingFixture.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QTimer>

#include <chrono>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using Testing::waitUntil;

/// Longer than a focus takes that is on its way.
constexpr auto aWhile = 400ms;

class ShelfDesktopTest : public Testing::FloatingFixture {
 protected:
  void showShelf(const char* name = "Screenshot 1.png") {
    Q_EMIT store().freshShotArrived(shot(name));
    ASSERT_TRUE(waitUntil([this] { return isSeen(panel()); }));
  }
  [[nodiscard]] FloatingPanel& panel() const { return *shelf().window(); }
  [[nodiscard]] QTimer& countdown() const { return *shelf().findChild<QTimer*>(QStringLiteral("shelf.countdown")); }
  void clickButton(const char* name) {
    const auto* button = panel().findChild<QAbstractButton*>(QString::fromLatin1(name));
    pointTo(button->mapToGlobal(button->rect().center()));
    act(QStringLiteral("click 1"));
  }
};

TEST_F(ShelfDesktopTest, ItComesUpAtTheLowerRightAndLeavesTheKeyboardAlone) {
  workElsewhere();
  showShelf();
  Testing::runEventLoopFor(aWhile);
  EXPECT_EQ(QGuiApplication::focusWindow(), nullptr);
  EXPECT_TRUE(letterGets('x'));
  act(QStringLiteral("key Escape"));
  letter_->expectLine("key Escape");
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(shelf().isVisible()) << "no key is taken from anybody";
  EXPECT_EQ(panel().pos(), shelfPlace(panel().screen()->availableGeometry(), panel().size()));
}

TEST_F(ShelfDesktopTest, OverOurOwnWindowItLeavesTheKeyboardThere) {
  showShelf();
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(window().isActiveWindow());
}

TEST_F(ShelfDesktopTest, AnotherScreenshotLeavesTheKeyboardAloneAsWell) {
  workElsewhere();
  showShelf();
  showShelf("Screenshot 2.png");
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(letterGets('x'));
}

TEST_F(ShelfDesktopTest, AClickGivesItTheKeyboardAndEscapeDismissesIt) {
  workElsewhere();
  showShelf();
  // Beside its buttons.
  pointTo(panel().mapToGlobal(QPoint(panel().width() - 40, panel().height() / 2 - 10)));
  act(QStringLiteral("click 1"));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel()));
  act(QStringLiteral("key Escape"));
  EXPECT_TRUE(waitUntil([this] { return !shelf().isVisible(); }));
  EXPECT_TRUE(letterGets('x')) << "the keyboard went back";
}

TEST_F(ShelfDesktopTest, ThePointerOverItHoldsItsTimeAndAnewBeginsTheWhole) {
  pointTo({10, 790});
  showShelf();
  ASSERT_TRUE(countdown().isActive());
  pointTo(panel().geometry().center());
  EXPECT_TRUE(waitUntil([this] { return !countdown().isActive(); }));
  clickButton("shelf.copyText");
  Testing::runEventLoopFor(aWhile);
  EXPECT_FALSE(countdown().isActive()) << "its buttons are on it";
  pointTo({10, 790});
  EXPECT_TRUE(waitUntil([this] { return countdown().isActive(); }));
  EXPECT_GT(countdown().remainingTimeAsDuration(), 10s);
  countdown().start(0ms);
  EXPECT_TRUE(waitUntil([this] { return !shelf().isVisible(); }));
}

TEST_F(ShelfDesktopTest, CopyImageCanBePastedWhereTheUserIs) {
  workElsewhere();
  showShelf();
  clickButton("shelf.copyImage");
  ASSERT_TRUE(waitUntil([] { return QGuiApplication::clipboard()->ownsClipboard(); }));
  EXPECT_TRUE(shelf().isVisible());
  goBackToLetter();
  act(QStringLiteral("key ctrl+v"));
  letter_->expectLine("pasted 320x200");
}

TEST_F(ShelfDesktopTest, ItIsAboveEverythingOnEveryWorkspace) {
  showShelf();
  const auto cover = coverEverything();
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(isSeen(panel()));
  act(QStringLiteral("set_desktop 1"));
  EXPECT_TRUE(waitUntil([this] { return isSeen(panel()); }));
  shelf().hide();
  showShelf("Screenshot 2.png");
  act(QStringLiteral("set_desktop 2"));
  EXPECT_TRUE(waitUntil([this] { return isSeen(panel()); })) << "also after it was hidden";
}

TEST_F(ShelfDesktopTest, ItComesBackAfterACaptureWithoutTheKeyboard) {
  pointTo({10, 790});
  workElsewhere();
  showShelf();
  Q_EMIT store().hidingRequested();
  ASSERT_TRUE(waitUntil([this] { return !shelf().isVisible(); }));
  Q_EMIT store().unhidingRequested();
  EXPECT_TRUE(waitUntil([this] { return isSeen(panel()); }));
  EXPECT_TRUE(countdown().isActive());
  EXPECT_TRUE(letterGets('x'));
}

}  // namespace
}  // namespace Nimbrel
