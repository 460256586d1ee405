#include "FilingFixture.h"
#include "Linux/Files/InotifyFileEvents.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using Testing::FakeFileEvents;
using ::testing::IsSupersetOf;
using ::testing::Not;
using Testing::shotNamed;

class FilingEvents : public Testing::FilingFixture {};

TEST_F(FilingEvents, CreatesTheLibraryAndWatchesItFromThen) {
  FakeFileEvents* events = nullptr;
  const auto store = home_.open(ProcessRole::headless, &events);
  addShot("Screenshot 1.png");
  store->scan();
  const WatchedFolder library{home_.inLibrary(""), WatchDepth::Recursive};
  const WatchedFolder plain{library.path.substr(0, library.path.size() - 1), library.depth};
  EXPECT_THAT(events->watched.back(), Not(Contains(plain)));
  store->fileAll();
  EXPECT_THAT(events->watched.back(), Contains(plain));
}

TEST_F(FilingEvents, AWorkerAnnouncesItsMoveAndTheFoldersForIt) {
  FakeFileEvents* events = nullptr;
  const auto path = addShot("Screenshot 1.png");
  const auto store = home_.open(ProcessRole::headless, &events);
  events->expected.clear();
  store->fileAll();
  EXPECT_THAT(events->expected, IsSupersetOf({path, home_.inLibrary("2026"), home_.inLibrary("2026/2026-03"),
                                              home_.inLibrary("2026/2026-03/Screenshot 1.png")}));
}

/// The file events of the system, and how often they came.
class CountedFileEvents final : public FileEvents {
 public:
  explicit CountedFileEvents(int& count) : count_(count) {}
  void watch(std::vector<WatchedFolder> folders, Seconds, Callback onChange) override {
    events_->watch(std::move(folders), Seconds(0.05), [this, onChange = std::move(onChange)] {
      ++count_;
      onChange();
    });
  }
  void expectOwnChange(const std::string& path) override { events_->expectOwnChange(path); }

 private:
  std::unique_ptr<FileEvents> events_ = makeInotifyFileEvents();
  int& count_;
};

TEST_F(FilingEvents, AWorkersOwnMovesRaiseNoScan) {
  home_.addFile(home_.inLibrary("a.png"));
  addShot("Screenshot 1.png");
  int told = 0;
  Services services;
  services.fileEvents = std::make_unique<CountedFileEvents>(told);
  const auto store = home_.open(ProcessRole::headless, std::move(services));
  Testing::runEventLoopFor(std::chrono::milliseconds(200));
  told = 0;
  store->fileAll();
  store->rename(*shotNamed(*store, "Screenshot 1.png"), "report");
  Testing::runEventLoopFor(std::chrono::milliseconds(500));
  EXPECT_EQ(told, 0);
  home_.addFile(home_.inLibrary("2026/2026-03/of somebody else.png"));
  EXPECT_TRUE(Testing::waitUntil([&] { return told > 0; }));
}

TEST_F(FilingEvents, TheMainApplicationAnnouncesNothingToItsFileEvents) {
  FakeFileEvents* events = nullptr;
  addShot("Screenshot 1.png");
  const auto store = home_.open(ProcessRole::mainApplication, &events);
  store->scan();
  store->fileAll();
  EXPECT_EQ(store->inboxCount(), 0U);
  EXPECT_THAT(events->expected, ElementsAre());
}

}  // namespace
}  // namespace Nimbrel
