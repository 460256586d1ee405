#include "Views/Companion/PanelPlacement.h"

#include <gtest/gtest.h>

#include <memory>

namespace Nimbrel {
namespace {

using PanelPlacement::anchor;
using PanelPlacement::listHeight;
using PanelPlacement::place;
using PanelPlacement::recent;
using PanelPlacement::Screen;
using PanelPlacement::screenOf;

/// One beside the other, with a panel of the desktop at the top of the left one and at the bottom of the right one.
const std::vector<Screen> screens{{.whole = {0, 0, 1600, 900}, .available = {0, 30, 1600, 870}},
                                  {.whole = {1600, 0, 1280, 800}, .available = {1600, 0, 1280, 760}}};
constexpr QSize panel(430, 600);
constexpr QPoint middle(800, 450);

TEST(ThePanelsAnchor, IsTheIconWhereTheTrayKnowsIt) {
  EXPECT_EQ(anchor({1500, 4, 22, 22}, middle, screens), QRect(1500, 4, 22, 22));
}

TEST(ThePanelsAnchor, IsThePointerNearAnEdgeWhereItDoesNot) {
  EXPECT_EQ(anchor({}, {1500, 12}, screens), QRect(1500, 12, 1, 1));
  EXPECT_EQ(anchor({}, {2000, 790}, screens), QRect(2000, 790, 1, 1));
  EXPECT_EQ(anchor({9000, 4, 22, 22}, {1500, 12}, screens), QRect(1500, 12, 1, 1)) << "an icon that is nowhere";
}

TEST(ThePanelsAnchor, IsNothingWhereThePointerIsElsewhere) {
  EXPECT_FALSE(anchor({}, middle, screens));
  EXPECT_FALSE(anchor({}, {9000, 10}, screens));
}

TEST(ThePanelsScreen, IsThatOfItsAnchorElseThatOfThePointer) {
  EXPECT_EQ(screenOf(QRect(2000, 780, 22, 22), middle, screens), 1U);
  EXPECT_EQ(screenOf(std::nullopt, {2000, 400}, screens), 1U);
  EXPECT_EQ(screenOf(std::nullopt, {9000, 400}, screens), 0U);
}

TEST(ThePanelsPlace, IsBelowAnIconAtTheTop) {
  EXPECT_EQ(place(QRect(800, 4, 22, 22), panel, screens[0]), QRect(810 - 215, 38, 430, 600));
  EXPECT_EQ(place(QRect(800, 40, 22, 22), panel, screens[0]).top(), 66) << "on a desktop without struts";
}

TEST(ThePanelsPlace, IsAboveAnIconAtTheBottom) {
  const auto found = place(QRect(2200, 770, 22, 22), panel, screens[1]);
  EXPECT_EQ(found.bottom() + 1, 752);
  EXPECT_EQ(found.left(), 2210 - 215);
}

TEST(ThePanelsPlace, StaysOnItsScreen) {
  EXPECT_EQ(place(QRect(1570, 4, 22, 22), panel, screens[0]).right() + 1, 1592);
  EXPECT_EQ(place(QRect(1602, 770, 22, 22), panel, screens[1]).left(), 1608);
  EXPECT_EQ(place(QRect(2200, 770, 22, 22), {430, 2000}, screens[1]).top(), 8) << "its head is seen of one too high";
}

TEST(ThePanelsPlace, IsTheUpperRightCornerWithoutAnIcon) {
  EXPECT_EQ(place(std::nullopt, panel, screens[0]), QRect(1600 - 8 - 430, 38, 430, 600));
}

TEST(TheHeightOfTheList, IsAShareOfTheScreenWithinItsLimits) {
  EXPECT_EQ(listHeight(500), 285);
  EXPECT_EQ(listHeight(1000), 420);
  EXPECT_EQ(listHeight(2000), 470);
  EXPECT_EQ(listHeight(std::nullopt), 336);
}

TEST(RecentShots, AreTenAtMost) {
  ShotList shots;
  for (ShotID id = 1; id <= 10; ++id) {
    auto shot = std::make_shared<Shot>();
    shot->id = id;
    shots.push_back(std::move(shot));
  }
  EXPECT_EQ(recent(shots), shots);
  const auto ten = shots;
  shots.push_back(std::make_shared<const Shot>());
  EXPECT_EQ(recent(shots), ten);
  EXPECT_TRUE(recent({}).empty());
}

}  // namespace
}  // namespace Nimbrel
