#include "Analysis/Cleanup.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr auto now = timestamp(2'000'000'000);
constexpr double day = 86'400;
constexpr std::int64_t looks = 0xFF00;

/// A shot that nothing speaks against: filed, read, with a text, large, looking like no other.
Shot kept(ShotID id, double age = 0) {
  Shot shot;
  shot.id = id;
  shot.date = now - Seconds(age);
  shot.filed = true;
  shot.ocrDone = true;
  shot.ocr = "text";
  shot.bytes = 1'000'000;
  return shot;
}

Shot duplicate(ShotID id, double age = 0) {
  auto shot = kept(id, age);
  shot.phash = looks;
  return shot;
}

Shot waiting(ShotID id, double age) {
  auto shot = kept(id, age);
  shot.filed = false;
  return shot;
}

Shot lowInformation(ShotID id, double age = 8 * day) {
  auto shot = kept(id, age);
  shot.ocr.clear();
  shot.bytes = 99'999;
  return shot;
}

ShotList listOf(const std::vector<Shot>& shots) {
  ShotList list;
  for (const auto& shot : shots) list.push_back(std::make_shared<const Shot>(shot));
  return list;
}

std::vector<ShotID> idsOf(const ShotList& shots) {
  std::vector<ShotID> ids;
  for (const auto& shot : shots) ids.push_back(shot->id);
  return ids;
}

std::vector<std::pair<ShotID, std::string_view>> suggested(const std::vector<Shot>& shots) {
  std::vector<std::pair<ShotID, std::string_view>> result;
  for (const auto& [shot, reason] : cleanupCandidates(listOf(shots), now)) result.emplace_back(shot->id, reason);
  return result;
}

Shot favourite(Shot shot) {
  shot.favorite = true;
  return shot;
}

TEST(CleanupCandidates, OfNearDuplicatesTheNewestStays) {
  EXPECT_THAT(suggested({duplicate(1, 10), duplicate(2, 5), duplicate(3, 20), kept(4)}),
              ElementsAre(Pair(1, "Near duplicate"), Pair(3, "Near duplicate")));
}

TEST(CleanupCandidates, FavouritesNeverAppear) {
  EXPECT_THAT(suggested({duplicate(1), favourite(duplicate(2, 5)), favourite(waiting(3, 40 * day)),
                         favourite(lowInformation(4))}),
              IsEmpty());
}

TEST(CleanupCandidates, AFavouriteThatIsTheNewestProtectsNoneOfItsDuplicates) {
  EXPECT_THAT(suggested({favourite(duplicate(1)), duplicate(2, 5)}), ElementsAre(Pair(2, "Near duplicate")));
}

TEST(CleanupCandidates, ADuplicateThatIsOldInTheInboxSaysSo) {
  auto old = duplicate(2, 31 * day);
  old.filed = false;
  EXPECT_THAT(suggested({duplicate(1), old}), ElementsAre(Pair(2, "Old Inbox item")));
}

TEST(CleanupCandidates, OneThatIsAllThreeIsALowInformationCapture) {
  auto all = lowInformation(2, 31 * day);
  all.filed = false;
  all.phash = looks;
  EXPECT_THAT(suggested({duplicate(1), all}), ElementsAre(Pair(2, "Low-information capture")));
}

TEST(CleanupCandidates, AHundredThousandBytesAreNotLowInformation) {
  auto larger = lowInformation(1);
  larger.bytes = 100'000;
  EXPECT_THAT(suggested({larger, lowInformation(2)}), ElementsAre(Pair(2, "Low-information capture")));
}

TEST(CleanupCandidates, AShotThatWaitsForRecognitionIsNotLowInformation) {
  auto unread = lowInformation(1);
  unread.ocrDone = false;
  EXPECT_THAT(suggested({unread}), IsEmpty());
}

TEST(CleanupCandidates, AShotExactlyAtTheLimitIsNotOld) {
  EXPECT_THAT(suggested({waiting(1, 30 * day), waiting(2, 30 * day + 1)}), ElementsAre(Pair(2, "Old Inbox item")));
  EXPECT_THAT(suggested({lowInformation(1, 7 * day), lowInformation(2, 7 * day + 1)}),
              ElementsAre(Pair(2, "Low-information capture")));
}

TEST(CleanupCandidates, AreInTheOrderGiven) {
  EXPECT_THAT(
      suggested({lowInformation(3), waiting(1, 40 * day), lowInformation(2)}),
      ElementsAre(Pair(3, "Low-information capture"), Pair(1, "Old Inbox item"), Pair(2, "Low-information capture")));
}

TEST(PurgeMatches, AreOlderThanTheLimitTheOldestFirst) {
  const auto shots = listOf({kept(1, 90 * day), kept(2, 90 * day + 1), kept(3, 200 * day)});
  EXPECT_THAT(idsOf(purgeMatches(shots, 90, PurgeScope::All, now)), ElementsAre(3, 2));
}

TEST(PurgeMatches, FavouritesAreKept) {
  EXPECT_THAT(purgeMatches(listOf({favourite(kept(1, 400 * day))}), 30, PurgeScope::All, now), IsEmpty());
}

TEST(PurgeMatches, OfTheInboxAloneFiledOnesAreKept) {
  const auto shots = listOf({kept(1, 40 * day), waiting(2, 40 * day)});
  EXPECT_THAT(idsOf(purgeMatches(shots, 30, PurgeScope::Inbox, now)), ElementsAre(2));
}

TEST(PurgeMatches, ShotsOfOneMomentStayInTheOrderGiven) {
  const auto shots = listOf({kept(2, 40 * day), kept(1, 40 * day), kept(3, 40 * day)});
  EXPECT_THAT(idsOf(purgeMatches(shots, 30, PurgeScope::All, now)), ElementsAre(2, 1, 3));
}

class DoomedDuplicates : public ::testing::Test {
 protected:
  [[nodiscard]] std::vector<ShotID> doomed(const DuplicateKeepers& keepers) const {
    return idsOf(doomedDuplicates(groups_, keepers));
  }

  std::vector<ShotList> groups_{listOf({duplicate(1), duplicate(2, 5), favourite(duplicate(3, 9))}),
                                listOf({duplicate(7), duplicate(8, 5)})};
};

TEST_F(DoomedDuplicates, WithoutAChoiceTheNewestOfEachGroupIsKept) {
  EXPECT_THAT(doomed({}), ElementsAre(2, 3, 8)) << "favourites are not spared here";
}

TEST_F(DoomedDuplicates, TheChosenOneIsKeptInstead) { EXPECT_THAT(doomed({{1, 3}}), ElementsAre(1, 2, 8)); }

TEST_F(DoomedDuplicates, AChoiceForAGroupThatBeginsOtherwiseNowIsNone) {
  EXPECT_THAT(doomed({{2, 3}}), ElementsAre(2, 3, 8));
}

TEST_F(DoomedDuplicates, AChosenShotThatHasLeftTheGroupLeavesItsFirst) {
  EXPECT_THAT(doomed({{7, 99}}), ElementsAre(2, 3, 8));
}

TEST_F(DoomedDuplicates, WithoutGroupsThereAreNone) { EXPECT_THAT(doomedDuplicates({}, {{1, 3}}), IsEmpty()); }

Shot sized(ShotID id, const std::string& path, std::int64_t bytes, bool filed = true) {
  auto shot = kept(id);
  shot.path = path;
  shot.bytes = bytes;
  shot.filed = filed;
  return shot;
}

TEST(ShrinkCandidates, AreAllThatAreNotHeicTheLargestFirst) {
  const auto shots = listOf({sized(1, "/a/1.png", 10), sized(2, "/a/2.HEIC", 99), sized(3, "/a/3.jpg", 30, false),
                             sized(4, "/a/4.png", 30), sized(5, "/a/heic", 5)});
  EXPECT_THAT(idsOf(shrinkCandidates(shots, ShrinkScope::All)), ElementsAre(3, 4, 1, 5));
}

TEST(ShrinkCandidates, MayBeThoseInTheLibraryAlone) {
  const auto shots = listOf({sized(1, "/a/1.png", 10), sized(2, "/a/2.png", 30, false)});
  EXPECT_THAT(idsOf(shrinkCandidates(shots, ShrinkScope::Filed)), ElementsAre(1));
}

TEST(IsHeic, TheExtensionMayBeInCapitals) {
  Shot shot;
  for (const auto* path : {"/a/b.heic", "/a/b.HEIC"}) {
    shot.path = path;
    EXPECT_TRUE(isHeic(shot)) << path;
  }
  for (const auto* path : {"/a/b.png", "/a/heic", "/a.heic/b"}) {
    shot.path = path;
    EXPECT_FALSE(isHeic(shot)) << path;
  }
}

}  // namespace
}  // namespace Nimbrel
