#include "Views/Gallery/GallerySelection.h"

#include <gmock/gmock.h>

namespace Nimbrel::GallerySelection {
namespace {

using ::testing::ElementsAre;
using ::testing::Optional;
using ::testing::UnorderedElementsAre;

ShotPtr shot(ShotID id) { return std::make_shared<const Shot>(Shot{.id = id}); }

ShotList shots(const std::vector<ShotID>& ids) {
  ShotList list;
  for (const auto id : ids) list.push_back(shot(id));
  return list;
}

const auto fiveShots = shots({50, 40, 30, 20, 10});

std::optional<ShotIDSet> clickedWith(Qt::KeyboardModifiers modifiers, ShotID id, const ShotIDSet& selection) {
  return clicked(id, selection, fiveShots, modifiers);
}

TEST(GalleryClick, SelectsTheShotAlone) {
  EXPECT_THAT(clickedWith(Qt::NoModifier, 30, {10, 20}), Optional(UnorderedElementsAre(30)));
  EXPECT_THAT(clickedWith(Qt::AltModifier, 30, {30}), Optional(UnorderedElementsAre(30)));
}

TEST(GalleryClick, WithCommandTogglesTheShot) {
  EXPECT_THAT(clickedWith(Qt::ControlModifier, 30, {10}), Optional(UnorderedElementsAre(10, 30)));
  EXPECT_THAT(clickedWith(Qt::ControlModifier, 10, {10, 30}), Optional(UnorderedElementsAre(30)));
  EXPECT_THAT(clickedWith(Qt::ControlModifier, 10, {10}), Optional(UnorderedElementsAre()));
}

TEST(GalleryClick, WithCommandAndShiftTogglesAsWithCommand) {
  EXPECT_THAT(clickedWith(Qt::ControlModifier | Qt::ShiftModifier, 10, {50}), Optional(UnorderedElementsAre(10, 50)));
}

TEST(GalleryClick, WithShiftAddsTheRangeInEitherDirection) {
  EXPECT_THAT(clickedWith(Qt::ShiftModifier, 20, {40}), Optional(UnorderedElementsAre(40, 30, 20)));
  EXPECT_THAT(clickedWith(Qt::ShiftModifier, 40, {20}), Optional(UnorderedElementsAre(40, 30, 20)));
  EXPECT_THAT(clickedWith(Qt::ShiftModifier, 20, {20}), Optional(UnorderedElementsAre(20)));
}

TEST(GalleryClick, WithShiftKeepsEarlierMembersOutsideTheRange) {
  const ShotIDSet selection{50, 10};
  const auto anchor = *selection.begin();
  const auto result = clickedWith(Qt::ShiftModifier, 30, selection);
  if (anchor == 50) {
    EXPECT_THAT(result, Optional(UnorderedElementsAre(50, 40, 30, 10)));
  } else {
    EXPECT_THAT(result, Optional(UnorderedElementsAre(50, 30, 20, 10)));
  }
}

TEST(GalleryClick, WithShiftAndNothingSelectedSelectsTheShotAlone) {
  EXPECT_THAT(clickedWith(Qt::ShiftModifier, 30, {}), Optional(UnorderedElementsAre(30)));
}

TEST(GalleryClick, WithShiftAndNoSelectedShotInSightDoesNothing) {
  EXPECT_EQ(clickedWith(Qt::ShiftModifier, 30, {99}), std::nullopt);
}

TEST(GalleryClick, WithShiftOnAShotThatIsGoneDoesNothing) {
  EXPECT_EQ(clickedWith(Qt::ShiftModifier, 99, {30}), std::nullopt);
}

TEST(GalleryTargets, AreTheSelectedShotsForOneOfSeveralInTheirVisibleOrder) {
  EXPECT_THAT(targets(fiveShots[3], {20, 50}, fiveShots), ElementsAre(fiveShots[0], fiveShots[3]));
}

TEST(GalleryTargets, AreTheShotAloneWhenItIsNotSelectedOrTheOnlyOne) {
  EXPECT_THAT(targets(fiveShots[2], {20, 50}, fiveShots), ElementsAre(fiveShots[2]));
  EXPECT_THAT(targets(fiveShots[2], {30}, fiveShots), ElementsAre(fiveShots[2]));
  EXPECT_THAT(targets(fiveShots[2], {}, fiveShots), ElementsAre(fiveShots[2]));
}

TEST(GalleryTargets, LeaveOutSelectedShotsThatAreHidden) {
  EXPECT_THAT(targets(fiveShots[2], {30, 99}, fiveShots), ElementsAre(fiveShots[2]));
}

TEST(GalleryPager, ComingToAShotSelectsItAlone) {
  EXPECT_THAT(scrolledTo(30, {10, 30}, fiveShots), Optional(UnorderedElementsAre(30)));
  EXPECT_THAT(scrolledTo(30, {}, fiveShots), Optional(UnorderedElementsAre(30)));
}

TEST(GalleryPager, ComingToTheSelectedShotChangesNothing) { EXPECT_EQ(scrolledTo(30, {30}, fiveShots), std::nullopt); }

TEST(GalleryPager, ComingToAShotThatIsGoneChangesNothing) {
  EXPECT_EQ(scrolledTo(99, {30}, fiveShots), std::nullopt);
  EXPECT_EQ(scrolledTo(30, {}, {}), std::nullopt);
}

TEST(GalleryPager, GoesToTheOnlySelectedShot) { EXPECT_EQ(scrollTarget({30}), 30); }

TEST(GalleryPager, StaysForSeveralSelectedShotsAndForNone) {
  EXPECT_EQ(scrollTarget({30, 40}), std::nullopt);
  EXPECT_EQ(scrollTarget({}), std::nullopt);
}

TEST(GalleryPager, BeginsWithTheFocusedShot) { EXPECT_EQ(start(fiveShots[3], fiveShots), 20); }

TEST(GalleryPager, BeginsWithTheFocusedShotEvenIfItIsHidden) { EXPECT_EQ(start(shot(99), fiveShots), 99); }

TEST(GalleryPager, BeginsWithTheFirstShotWithoutASelection) { EXPECT_EQ(start(std::nullopt, fiveShots), 50); }

TEST(GalleryPager, BeginsNowhereWithoutShots) { EXPECT_EQ(start(std::nullopt, {}), std::nullopt); }

}  // namespace
}  // namespace Nimbrel::GallerySelection
