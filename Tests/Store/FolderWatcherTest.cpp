#include "Store/FolderWatcher.h"

#include "Support/StoreHome.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::FakeFileEvents;
using ::testing::IsEmpty;

TEST(FolderWatcher, WatchesSourcesFlatAndTheLibraryWithAllBelowIt) {
  FakeFileEvents events;
  int changes = 0;
  FolderWatcher watcher(events, [&] { ++changes; });
  watcher.watch({"/a", "/b"}, {"/library"});
  ASSERT_EQ(events.watched.size(), 1U);
  EXPECT_THAT(events.watched[0],
              ElementsAre(WatchedFolder{"/a", WatchDepth::Flat}, WatchedFolder{"/b", WatchDepth::Flat},
                          WatchedFolder{"/library", WatchDepth::Recursive}));
  EXPECT_EQ(events.latency, Seconds{0.6});
  events.change();
  EXPECT_EQ(changes, 1);
}

TEST(FolderWatcher, EndsTheWatchingWithItself) {
  FakeFileEvents events;
  {
    FolderWatcher(events, [] {}).watch({"/a"}, {});
  }
  ASSERT_EQ(events.watched.size(), 2U);
  EXPECT_THAT(events.watched[1], IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
