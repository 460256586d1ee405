#include "Store/UnlockedShots.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

ShotPtr shot(ShotID id, double added) {
  Shot made;
  made.id = id;
  made.added = timestamp(added);
  return std::make_shared<const Shot>(std::move(made));
}

TEST(UnlockedShots, HoldWhatWasAdded) {
  const auto unlocked = UnlockedShots().with({shot(1, 10)}).with({shot(2, 20)});
  EXPECT_THAT(unlocked.ids(), UnorderedElementsAre(1, 2));
  EXPECT_TRUE(unlocked.contains(*shot(2, 20)));
  EXPECT_FALSE(unlocked.contains(*shot(3, 30)));
}

TEST(UnlockedShots, ANewShotUnderAnOldIdIsNotAmongThem) {
  const auto unlocked = UnlockedShots().with({shot(1, 10)});
  EXPECT_FALSE(unlocked.contains(*shot(1, 11)));
  EXPECT_THAT(unlocked.among({shot(1, 11)}).ids(), IsEmpty());
}

TEST(UnlockedShots, KeepThoseThatAreStillThere) {
  const auto unlocked = UnlockedShots().with({shot(1, 10), shot(2, 20)});
  EXPECT_EQ(unlocked.among({shot(2, 20), shot(3, 30)}), UnlockedShots().with({shot(2, 20)}));
}

}  // namespace
}  // namespace Nimbrel
