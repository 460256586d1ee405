#include "Screencapture/SoundSource.h"

#include "Screencapture/SoundServer.h"
#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Testing::waitUntil;

constexpr auto patience = 10s;

bool isLoud(const SoundBlock& block) {
  return std::ranges::any_of(block.samples, [](std::int16_t sample) { return std::abs(sample) > 4000; });
}

/// A socket that takes connections and never answers.
class DeafServer {
 public:
  explicit DeafServer(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{.sun_family = AF_UNIX};
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(socket_, 5), 0);
  }
  ~DeafServer() { ::close(socket_); }
  DeafServer(const DeafServer&) = delete;
  DeafServer& operator=(const DeafServer&) = delete;

 private:
  int socket_;
};

TEST(SoundSourceTest, WithoutAServerThereIsNoneAtOnce) {
  const Testing::NoSoundServer none;
  const auto before = Clock::now();
  EXPECT_EQ(SoundSource::open(patience), nullptr);
  EXPECT_LT(Clock::now() - before, patience / 2);
}

TEST(SoundSourceTest, AServerThatDoesNotAnswerIsNotWaitedForLongerThanTheLimit) {
  const Testing::TemporaryFolder folder;
  const DeafServer server(folder.path("socket"));
  const Testing::EnvironmentVariable address("PULSE_SERVER", "unix:" + folder.path("socket"));
  const auto before = Clock::now();
  EXPECT_EQ(SoundSource::open(50ms), nullptr);
  EXPECT_LT(Clock::now() - before, patience);
}

TEST(SoundSourceTest, HearsWhatTheDefaultSourceHears) {
  Testing::SoundServer server;
  const auto before = Clock::now();
  const auto source = SoundSource::open(patience);
  ASSERT_NE(source, nullptr);
  server.playTone();
  std::vector<SoundBlock> blocks;
  EXPECT_TRUE(waitUntil([&] {
    std::ranges::move(source->take(), std::back_inserter(blocks));
    return std::ranges::count_if(blocks, isLoud) >= 5;
  }));
  auto end = before - 1s;  // what was on its way before is heard as well
  for (const auto& block : blocks) {
    EXPECT_GE(block.start, end) << "blocks overlap";
    EXPECT_LE(block.start, Clock::now());
    const auto frames = static_cast<std::int64_t>(block.samples.size()) / SoundSource::channels;
    end = block.start + 1'000'000'000ns * frames / SoundSource::sampleRate - 1us;
  }
}

TEST(SoundSourceTest, FallsSilentWhenItsServerGoes) {
  Testing::SoundServer server;
  const auto source = SoundSource::open(patience);
  ASSERT_NE(source, nullptr);
  EXPECT_TRUE(waitUntil([&] { return !source->take().empty(); }));
  server.end();
  EXPECT_TRUE(waitUntil([&] { return source->take().empty(); }));
}

}  // namespace

}  // namespace Nimbrel::Screencapture
