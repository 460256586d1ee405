#include "Views/Pins/PinnedView.h"

#include "Support/FakeWindowStacking.h"
#include "Support/Waiting.h"
#include "Views/Pins/PinButton.h"
#include "Views/Shared/Theme.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <array>
#include <memory>
#include <utility>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

constexpr int unitsPerNotch = 120;

QImage plain(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::blue);
  return image;
}

class PinnedViewTest : public ::testing::Test {
 protected:
  PinnedViewTest() { open(plain(600, 400)); }

  void open(const QImage& picture) {
    view_ = std::make_unique<PinnedView>(picture, stacking_);
    view_->open(screen(), 0);
  }
  [[nodiscard]] static QScreen& screen() { return *QGuiApplication::primaryScreen(); }

  [[nodiscard]] PinButton& button(const char* name) const {
    return *view_->findChild<PinButton*>(QString::fromLatin1(name));
  }
  [[nodiscard]] bool showsButtons() const { return button("pin.unpin").isVisible(); }
  void enter() {
    QEnterEvent event({50, 50}, {50, 50}, view_->mapToGlobal(QPointF(50, 50)));
    QApplication::sendEvent(view_.get(), &event);
  }
  void leave() {
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(view_.get(), &event);
  }

  /// What the pointer does at a point of the desktop.
  void point(QEvent::Type type, QPoint place, Qt::KeyboardModifiers keys = {}) {
    const auto pressed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, view_->mapFromGlobal(QPointF(place)), place, pressed, held, keys);
    QApplication::sendEvent(view_.get(), &event);
  }
  /// Takes the window there by a point of it, in two moves.
  void drag(QPoint from, QPoint by, Qt::KeyboardModifiers keys = {}) {
    const auto start = view_->mapToGlobal(from);
    point(QEvent::MouseButtonPress, start);
    point(QEvent::MouseMove, start + by / 2, keys);
    point(QEvent::MouseMove, start + by, keys);
    point(QEvent::MouseButtonRelease, start + by, keys);
  }
  void turnWheel(double notches, QPoint at) {
    QWheelEvent event(at, view_->mapToGlobal(at), {}, {0, static_cast<int>(notches * unitsPerNotch)}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(view_.get(), &event);
  }
  /// What is seen of it, on nothing.
  [[nodiscard]] QImage seen() const {
    QImage image(view_->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view_->render(&image, {}, {}, QWidget::DrawChildren);
    return image;
  }

  Testing::FakeWindowStacking stacking_;
  std::unique_ptr<PinnedView> view_;
};

TEST_F(PinnedViewTest, HasNoFrameAndStaysAboveOthers) {
  EXPECT_TRUE(view_->windowFlags().testFlag(Qt::FramelessWindowHint));
  EXPECT_TRUE(view_->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  EXPECT_TRUE(view_->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(PinnedViewTest, TheDesktopIsAskedToKeepItAboveEachTimeBeforeItIsShown) {
  view_->hide();
  view_->show();
  const Testing::FakeWindowStacking::Kept before{view_->windowHandle(), false};
  EXPECT_THAT(stacking_.kept, ::testing::ElementsAre(before, before));
}

TEST_F(PinnedViewTest, OpensAtTheTopRightOfTheFreePartOfItsScreen) {
  const auto room = screen().availableGeometry();
  EXPECT_EQ(view_->size(), QSize(460, 307));
  EXPECT_EQ(view_->pos(), QPoint(room.x() + room.width() - 460 - 40, room.y() + 40));
}

TEST_F(PinnedViewTest, ASmallPictureIsNotEnlargedUntilTheUserMakesTheWindowLarger) {
  open(plain(100, 50));
  EXPECT_EQ(view_->size(), QSize(160, 120));
  EXPECT_EQ(view_->picturePlace(), QRectF(30, 35, 100, 50));
  view_->resize(320, 240);
  EXPECT_EQ(view_->picturePlace(), QRectF(0, 40, 320, 160));
}

TEST_F(PinnedViewTest, ButtonsAreSeenWhileThePointerIsOnIt) {
  EXPECT_FALSE(showsButtons());
  enter();
  EXPECT_TRUE(showsButtons());
  leave();
  EXPECT_FALSE(showsButtons());
}

TEST_F(PinnedViewTest, ButtonsStandInARowAtTheTopRight) {
  enter();
  const auto place = [&](const char* name) {
    return QRect(button(name).mapTo(view_.get(), QPoint()), button(name).size());
  };
  EXPECT_EQ(place("pin.fade"), QRect(460 - 6 - 20, 6, 20, 20));
  EXPECT_EQ(place("pin.open"), QRect(460 - 2 * 26, 6, 20, 20));
  EXPECT_EQ(place("pin.unpin"), QRect(460 - 3 * 26, 6, 20, 20));
}

TEST_F(PinnedViewTest, InScriptsFromRightToLeftButtonsStandAtTheLeft) {
  view_->setLayoutDirection(Qt::RightToLeft);
  enter();
  EXPECT_TRUE(waitUntil([&] { return button("pin.fade").mapTo(view_.get(), QPoint()) == QPoint(6, 6); }));
  EXPECT_EQ(button("pin.unpin").mapTo(view_.get(), QPoint()), QPoint(6 + 2 * 26, 6));
}

TEST_F(PinnedViewTest, ButtonsStandOverThePictureOfAWindowThatIsLarger) {
  view_->resize(600, 307);
  enter();
  const auto right = button("pin.fade").mapTo(view_.get(), QPoint(20, 0)).x() + 6;
  EXPECT_EQ(right, view_->picturePlace().toRect().right() + 1);
}

TEST_F(PinnedViewTest, ButtonsAreToldByTheirTitles) {
  for (const auto& [name, title] :
       std::array{std::pair("pin.unpin", "Unpin"), std::pair("pin.open", "Open"), std::pair("pin.fade", "Fade")}) {
    EXPECT_EQ(button(name).toolTip().toStdString(), title);
    EXPECT_EQ(button(name).accessibleName().toStdString(), title);
  }
  EXPECT_TRUE(view_->testAttribute(Qt::WA_AlwaysShowToolTips)) << "it is seldom the active window";
}

TEST_F(PinnedViewTest, ButtonsAskForWhatTheySay) {
  enter();
  const QSignalSpy closing(view_.get(), &PinnedView::closeRequested);
  const QSignalSpy opening(view_.get(), &PinnedView::openRequested);
  QTest::mouseClick(&button("pin.open"), Qt::LeftButton);
  EXPECT_EQ(opening.count(), 1);
  EXPECT_EQ(closing.count(), 0);
  QTest::mouseClick(&button("pin.unpin"), Qt::LeftButton);
  EXPECT_EQ(closing.count(), 1);
}

TEST_F(PinnedViewTest, FadeLetsWhatLiesBelowThroughAndBack) {
  const QPoint middle(230, 150);
  enter();
  EXPECT_EQ(button("pin.fade").symbol(), QStringLiteral("circle.lefthalf.filled"));
  EXPECT_EQ(seen().pixelColor(middle).alpha(), 255);
  QTest::mouseClick(&button("pin.fade"), Qt::LeftButton);
  EXPECT_EQ(view_->opacity(), 0.55);
  EXPECT_EQ(button("pin.fade").symbol(), QStringLiteral("circle.fill"));
  EXPECT_TRUE(button("pin.fade").isChecked());
  EXPECT_NEAR(seen().pixelColor(middle).alphaF(), 0.55, 0.01);
  QTest::mouseClick(&button("pin.fade"), Qt::LeftButton);
  EXPECT_EQ(view_->opacity(), 1);
  EXPECT_EQ(button("pin.fade").symbol(), QStringLiteral("circle.lefthalf.filled"));
  EXPECT_FALSE(button("pin.fade").isChecked());
  EXPECT_EQ(seen().pixelColor(middle).alpha(), 255);
}

TEST_F(PinnedViewTest, CornersAreRoundAndOutlined) {
  const auto image = seen();
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(image.pixelColor(459, 306).alpha(), 0);
  EXPECT_EQ(image.pixelColor(230, 0), themeColor(Token::Separator));
  EXPECT_EQ(image.pixelColor(230, 1), QColor(Qt::blue));
}

TEST_F(PinnedViewTest, WhereWindowsCannotBeSeenThroughItIsASquareAndFadesToItsGround) {
  stacking_.composited = false;
  open(plain(600, 400));
  EXPECT_EQ(seen().pixelColor(230, 150), QColor(Qt::blue));
  EXPECT_EQ(seen().pixelColor(0, 0).alpha(), 255);
  view_->toggleFade();
  const auto faded = seen().pixelColor(230, 150);
  EXPECT_EQ(faded.alpha(), 255);
  EXPECT_GT(faded.lightnessF(), QColor(Qt::blue).lightnessF());
}

TEST_F(PinnedViewTest, AnyPointOfThePictureMovesIt) {
  const auto before = view_->geometry();
  drag({200, 150}, {-60, 90});
  EXPECT_EQ(view_->geometry(), before.translated(-60, 90));
  drag({20, 20}, {-30, 0});
  EXPECT_EQ(view_->geometry(), before.translated(-90, 90));
}

TEST_F(PinnedViewTest, AHandThatTremblesMovesNothing) {
  const auto before = view_->geometry();
  drag({200, 150}, {1, 1});
  EXPECT_EQ(view_->geometry(), before);
}

TEST_F(PinnedViewTest, EdgesAndCornersResizeIt) {
  const auto before = view_->geometry();
  drag({2, 150}, {-40, 0});
  EXPECT_EQ(view_->geometry(), before.adjusted(-40, 0, 0, 0));
  drag({498, 305}, {-100, 20});
  EXPECT_EQ(view_->geometry(), before.adjusted(-40, 0, -100, 20));
}

TEST_F(PinnedViewTest, ItNeverBecomesSmallerThanItsLeastSize) {
  drag({458, 305}, {-900, -900});
  EXPECT_EQ(view_->size(), QSize(160, 120));
}

TEST_F(PinnedViewTest, ShiftKeepsTheRatio) {
  view_->setGeometry(100, 100, 400, 200);
  drag({398, 100}, {100, 0}, Qt::ShiftModifier);
  EXPECT_EQ(view_->geometry(), QRect(100, 100, 500, 250));
}

TEST_F(PinnedViewTest, ShiftCountsFromTheMomentItIsHeld) {
  view_->setGeometry(100, 100, 400, 200);
  const auto start = view_->mapToGlobal(QPoint(398, 100));
  point(QEvent::MouseButtonPress, start);
  point(QEvent::MouseMove, start + QPoint(100, 0));
  EXPECT_EQ(view_->size(), QSize(500, 200));
  point(QEvent::MouseMove, start + QPoint(100, 0), Qt::ShiftModifier);
  EXPECT_EQ(view_->size(), QSize(500, 250));
  point(QEvent::MouseMove, start + QPoint(100, 0));
  EXPECT_EQ(view_->size(), QSize(500, 200));
  point(QEvent::MouseButtonRelease, start + QPoint(100, 0));
}

TEST_F(PinnedViewTest, ThePointerShowsWhatAnEdgeDoes) {
  const auto shapeAt = [this](QPoint at) {
    QMouseEvent event(QEvent::MouseMove, at, view_->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(view_.get(), &event);
    return view_->cursor().shape();
  };
  EXPECT_EQ(shapeAt({0, 150}), Qt::SizeHorCursor);
  EXPECT_EQ(shapeAt({230, 306}), Qt::SizeVerCursor);
  EXPECT_EQ(shapeAt({0, 0}), Qt::SizeFDiagCursor);
  EXPECT_EQ(shapeAt({459, 0}), Qt::SizeBDiagCursor);
  EXPECT_EQ(shapeAt({230, 150}), Qt::ArrowCursor);
}

TEST_F(PinnedViewTest, TheWheelChangesTheSizeAroundThePointer) {
  view_->setGeometry(100, 100, 400, 200);
  turnWheel(1, {0, 0});
  EXPECT_EQ(view_->geometry(), QRect(100, 100, 440, 220));
  turnWheel(-1, {0, 0});
  EXPECT_EQ(view_->geometry(), QRect(100, 100, 400, 200));
  turnWheel(1, {200, 100});
  EXPECT_EQ(view_->geometry(), QRect(80, 90, 440, 220));
}

TEST_F(PinnedViewTest, TheWheelKeepsTheRatioHoweverOftenItIsTurned) {
  for (int notch = 0; notch < 20; ++notch) turnWheel(0.25, {10, 10});
  for (int notch = 0; notch < 20; ++notch) turnWheel(-0.25, {10, 10});
  EXPECT_NEAR(view_->width(), 460, 1);
  EXPECT_NEAR(view_->height(), 307, 1);
}

TEST_F(PinnedViewTest, EscapeAsksToClose) {
  const QSignalSpy closing(view_.get(), &PinnedView::closeRequested);
  QTest::keyClick(view_.get(), Qt::Key_Escape);
  EXPECT_EQ(closing.count(), 1);
}

TEST_F(PinnedViewTest, TheWindowManagersCloseAsksToClose) {
  const QSignalSpy closing(view_.get(), &PinnedView::closeRequested);
  view_->close();
  EXPECT_EQ(closing.count(), 1);
}

TEST_F(PinnedViewTest, KeysChangeSizeAndPlace) {
  view_->setGeometry(100, 100, 400, 200);
  QTest::keyClick(view_.get(), Qt::Key_Right);
  QTest::keyClick(view_.get(), Qt::Key_Down);
  EXPECT_EQ(view_->geometry(), QRect(108, 108, 400, 200));
  QTest::keyClick(view_.get(), Qt::Key_Left);
  QTest::keyClick(view_.get(), Qt::Key_Up);
  QTest::keyClick(view_.get(), Qt::Key_Plus);
  EXPECT_EQ(view_->geometry(), QRect(80, 90, 440, 220));
  QTest::keyClick(view_.get(), Qt::Key_Minus);
  EXPECT_EQ(view_->geometry(), QRect(100, 100, 400, 200));
}

TEST_F(PinnedViewTest, TabReachesTheButtonsAndEscapeStillAsksToClose) {
  view_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
  view_->setFocus();
  QTest::keyClick(view_.get(), Qt::Key_Tab);
  EXPECT_TRUE(showsButtons());
  ASSERT_EQ(QApplication::focusWidget(), &button("pin.unpin"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), &button("pin.fade"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(view_->opacity(), 0.55);
  const QSignalSpy closing(view_.get(), &PinnedView::closeRequested);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(closing.count(), 1);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_FALSE(showsButtons()) << "the keyboard is at the picture again";
}

TEST_F(PinnedViewTest, ButtonsGoWithTheKeyboard) {
  view_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
  QTest::keyClick(view_.get(), Qt::Key_Tab);
  ASSERT_TRUE(showsButtons());
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_TRUE(waitUntil([this] { return !showsButtons(); }));
}

TEST_F(PinnedViewTest, IsAWindowForThoseWhoCannotSeeIt) {
  view_->setAccessibleName(QStringLiteral("Screenshot 1.png"));
  const auto* interface = QAccessible::queryAccessibleInterface(view_.get());
  ASSERT_NE(interface, nullptr);
  EXPECT_EQ(interface->role(), QAccessible::Window);
  EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Screenshot 1.png"));
}

TEST_F(PinnedViewTest, FollowsTheThemeOfTheDesktop) {
  const auto light = seen().pixelColor(230, 0);
  Theme::shared().setAppearance({.scheme = Appearance::Scheme::Dark, .accent = {}, .hasHighContrast = false});
  EXPECT_NE(seen().pixelColor(230, 0), light);
  Theme::shared().setAppearance({});
}

}  // namespace
}  // namespace Nimbrel
