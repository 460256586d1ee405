// Runs over one library wait for one another, whoever makes them.

#include "SyncFixture.h"

#include "../Linux/RefusedCalls.h"
#include "Platform/FolderLock.h"

#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <thread>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;

class SyncTurns : public Testing::SyncFixture {
 protected:
  /// Whether nobody holds the library at the moment.
  [[nodiscard]] bool isFree() const {
    std::stop_source stop;
    stop.request_stop();
    return FolderLock::take(library(), stop.get_token()).has_value();
  }
};

/// A process that holds a folder until it is told to do the rest and go.
class Holder {
 public:
  Holder(const std::string& folder, const std::function<void()>& rest) {
    EXPECT_EQ(::pipe(holds_.data()), 0);
    EXPECT_EQ(::pipe(go_.data()), 0);
    child_ = ::fork();
    if (child_ == 0) hold(folder, rest);
    ::close(holds_[1]);
    ::close(go_[0]);
    char token = 0;
    EXPECT_EQ(::read(holds_[0], &token, 1), 1);
  }
  ~Holder() {
    ::close(holds_[0]);
    ::close(go_[1]);
    ::waitpid(child_, nullptr, 0);
  }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

  void letGo() const { EXPECT_EQ(::write(go_[1], "x", 1), 1); }

 private:
  [[noreturn]] void hold(const std::string& folder, const std::function<void()>& rest) const {
    ::close(go_[1]);
    const auto lock = FolderLock::take(folder, {});
    char token = 'x';
    if (!lock || ::write(holds_[1], &token, 1) != 1) ::_exit(1);
    if (::read(go_[0], &token, 1) == 1) rest();
    ::_exit(0);
  }

  std::array<int, 2> holds_{};
  std::array<int, 2> go_{};
  pid_t child_ = -1;
};

TEST_F(SyncTurns, ARunHoldsTheLibraryFromItsFirstFileToItsLast) {
  addPicture("a.png");
  addEnvelope("b.png", Testing::someReferenceDate, "content");
  std::size_t looks = 0;
  const auto result =
      EncryptedSync::run(library(), vault(), Testing::passphrase, [&](std::size_t done, std::size_t all) {
        EXPECT_FALSE(isFree()) << done << " of " << all;
        ++looks;
      });
  ASSERT_TRUE(result) << result.error().message;
  EXPECT_EQ(looks, 5U);
  EXPECT_TRUE(isFree());
}

TEST_F(SyncTurns, ARunWaitsForAnotherProcess) {
  const Holder holder(library(), [this] { addPicture("late.png"); });
  std::string outcome;
  std::jthread running([&] { outcome = run(); });
  EXPECT_FALSE(isFree());
  holder.letGo();
  running.join();
  EXPECT_EQ(outcome, "1 sent, 0 received") << "it begins when the other has done its last";
}

TEST_F(SyncTurns, AProcessThatDiesHoldsNothing) {
  {
    const Holder holder(library(), [] {});
  }
  EXPECT_TRUE(isFree());
}

TEST_F(SyncTurns, ARunThatWaitsCanBeStopped) {
  addPicture("a.png");
  const auto held = FolderLock::take(library(), {});
  std::stop_source stop;
  stop.request_stop();
  bool hasBegun = false;
  const auto result = EncryptedSync::run(
      library(), vault(), Testing::passphrase, [&](std::size_t, std::size_t) { hasBegun = true; }, stop.get_token());
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().message, "It was stopped");
  EXPECT_FALSE(hasBegun);
  EXPECT_THAT(filesIn(vault()), IsEmpty());
}

TEST_F(SyncTurns, RunsOverOtherLibrariesAreNotWaitedFor) {
  const auto held = FolderLock::take(folder_.makeFolder("other library"), {});
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncTurns, AFileSystemWithoutLocksIsNoTrouble) {
  addPicture("a.png");
  const auto outcome =
      Testing::withRefusedCalls({{SYS_flock, ENOLCK}}, [&] { return run() == "1 sent, 0 received" ? 0 : 1; });
  EXPECT_EQ(outcome, 0);
}

}  // namespace
}  // namespace Nimbrel
