#include "Screencapture/DesktopLayout.h"

#include <gtest/gtest.h>

namespace Nimbrel::Screencapture {

namespace {

/// Two monitors of different height side by side, so that the right one ends above the screen's lower edge.
DesktopLayout twoMonitors() {
  return {QRect(0, 0, 3000, 1600), {{"left", QRect(0, 0, 2000, 1600)}, {"right", QRect(2000, 0, 1000, 800), true}}, {}};
}

DesktopLayout withWindows(std::vector<StackedWindow> windows) {
  return {QRect(0, 0, 2000, 1000), {{"only", QRect(0, 0, 2000, 1000)}}, std::move(windows)};
}

TEST(Monitors, TheMainOneIsThePrimaryOrTheFirst) {
  auto layout = twoMonitors();
  EXPECT_EQ(mainMonitor(layout.monitors).name, "right");
  layout.monitors[1].isPrimary = false;
  EXPECT_EQ(mainMonitor(layout.monitors).name, "left");
}

TEST(Monitors, AnAreaBelongsToTheOneThatShowsMostOfIt) {
  const auto layout = twoMonitors();
  EXPECT_EQ(monitorOf(layout.monitors, QRect(1900, 0, 150, 100)).name, "left");
  EXPECT_EQ(monitorOf(layout.monitors, QRect(1900, 0, 250, 100)).name, "right");
  EXPECT_EQ(monitorOf(layout.monitors, QRect(2500, 1000, 100, 100)).name, "left") << "on none";
  EXPECT_EQ(monitorOf(layout.monitors, QRect()).name, "left");
}

TEST(WindowStack, TheUppermostApplicationIsMeant) {
  const auto layout = withWindows({{1, QRect(0, 0, 2000, 1000), false},
                                   {2, QRect(100, 100, 400, 400), true},
                                   {3, QRect(300, 300, 400, 400), true},
                                   {4, QRect(350, 350, 50, 50), false}});
  EXPECT_EQ(applicationAt(layout, {200, 200})->id, 2U);
  EXPECT_EQ(applicationAt(layout, {400, 400})->id, 3U);
  EXPECT_EQ(applicationAt(layout, {360, 360})->id, 3U) << "menus and the like are not taken";
  EXPECT_FALSE(applicationAt(layout, {50, 50})) << "nor is the desktop";
  EXPECT_EQ(applicationAt(layout, {100, 100})->id, 2U);
  EXPECT_FALSE(applicationAt(layout, {99, 100}));
}

TEST(WindowStack, IsWhollyVisibleUnlessCovered) {
  const auto layout = withWindows({{1, QRect(0, 0, 2000, 1000), false},
                                   {2, QRect(100, 100, 400, 400), true},
                                   {3, QRect(499, 499, 400, 400), true},
                                   {4, QRect(900, 100, 100, 100), true},
                                   {5, QRect(950, 150, 10, 10), false}});
  EXPECT_FALSE(isWhollyVisible(layout, layout.windows[1])) << "by one pixel";
  EXPECT_TRUE(isWhollyVisible(layout, layout.windows[2]));
  EXPECT_FALSE(isWhollyVisible(layout, layout.windows[3])) << "by a menu";
}

TEST(WindowStack, IsNotWhollyVisibleBeyondTheMonitors) {
  const auto layout = twoMonitors();
  EXPECT_FALSE(isWhollyVisible(layout, {1, QRect(-1, 0, 100, 100), true}));
  EXPECT_FALSE(isWhollyVisible(layout, {1, QRect(2500, 750, 100, 100), true})) << "where no monitor is";
  EXPECT_TRUE(isWhollyVisible(layout, {1, QRect(1950, 700, 100, 100), true})) << "over two monitors";
}

TEST(Snapping, CatchesTheNearestEdgeWithinReach) {
  const auto layout = withWindows({{1, QRect(100, 200, 300, 400), true}});
  EXPECT_EQ(snapped(layout, {104, 300}, 6), QPoint(100, 300));
  EXPECT_EQ(snapped(layout, {94, 300}, 6), QPoint(100, 300));
  EXPECT_EQ(snapped(layout, {93, 300}, 6), QPoint(93, 300));
  EXPECT_EQ(snapped(layout, {403, 597}, 6), QPoint(400, 600)) << "behind the last pixel";
  EXPECT_EQ(snapped(layout, {250, 400}, 6), QPoint(250, 400));
}

TEST(Snapping, CatchesEdgesOfMonitors) {
  const auto layout = twoMonitors();
  EXPECT_EQ(snapped(layout, {1997, 4}, 6), QPoint(2000, 0));
  EXPECT_EQ(snapped(layout, {2999, 797}, 6), QPoint(3000, 800));
  EXPECT_EQ(snapped(layout, {1000, 797}, 6), QPoint(1000, 797)) << "the left monitor goes on below";
}

TEST(Snapping, IgnoresEdgesThatAreOutOfSight) {
  const auto layout = withWindows({{1, QRect(100, 100, 300, 300), true}, {2, QRect(50, 50, 200, 200), true}});
  EXPECT_EQ(snapped(layout, {103, 150}, 6), QPoint(103, 150)) << "covered there";
  EXPECT_EQ(snapped(layout, {103, 300}, 6), QPoint(100, 300));
  EXPECT_EQ(snapped(layout, {103, 700}, 6), QPoint(103, 700)) << "the window does not reach there";
}

TEST(Snapping, OfTwoEdgesTheNearerOneCatches) {
  const auto layout = withWindows({{1, QRect(100, 0, 100, 500), true}, {2, QRect(205, 0, 100, 500), true}});
  EXPECT_EQ(snapped(layout, {202, 250}, 6).x(), 200);
  EXPECT_EQ(snapped(layout, {203, 250}, 6).x(), 205);
}

}  // namespace

}  // namespace Nimbrel::Screencapture
