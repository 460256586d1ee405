// How much memory a run takes, and what it does without.

#include "SyncFixture.h"

#include "Support/SmallDisk.h"

#include <malloc.h>
#include <sys/resource.h>

#include <fstream>

namespace Nimbrel {
namespace {

using Testing::payload;
using Testing::sealed;
using Testing::someReferenceDate;

class SyncMemory : public Testing::SyncFixture {};

std::size_t dataBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmData:")) return std::stoull(line.substr(7)) << 10;
  }
  return 0;
}

/// Lets this process have so many bytes more than it has in use.
bool limitMemory(std::size_t bytes) {
  // What former tests have given back is not to serve a second time.
  ::malloc_trim(0);
  const rlim_t limit = dataBytes() + bytes;
  const rlimit most{limit, limit};
  return ::setrlimit(RLIMIT_DATA, &most) == 0;
}

TEST_F(SyncMemory, TakesLittleMoreMemoryThanTheLargestFile) {
  constexpr std::size_t size = 48 << 20;
  addPicture("out.png", std::string(size, 'x'));
  addEnvelope("in.png", someReferenceDate, std::string(size, 'y'));
  const auto disk = folder_.makeFolder("disk");
  const auto outcome = Testing::onSmallDisk(disk, 1 << 20, [&] {
    if (!limitMemory(size * 3 / 2)) return 1;
    return run() == "1 sent, 1 received" ? 0 : 2;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncMemory, AVaultFileThatDoesNotFitIntoMemoryEndsTheRun) {
  constexpr std::size_t size = 48 << 20;
  addToVault(std::string(size, 'x'));
  const auto disk = folder_.makeFolder("disk");
  const auto outcome = Testing::onSmallDisk(disk, 1 << 20, [&] {
    if (!limitMemory(size / 2)) return 1;
    return run() == "Cannot read 0123.nimbrelvault: There is not enough memory for it" ? 0 : 2;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncMemory, AFileThatIsAllPathTakesNoMore) {
  constexpr std::size_t size = 48 << 20;
  addPath(std::string(size, 'x'));
  const auto disk = folder_.makeFolder("disk");
  const auto outcome = Testing::onSmallDisk(disk, 1 << 20, [&] {
    if (!limitMemory(size * 3 / 2)) return 1;
    return run().ends_with("…: The name is too long") ? 0 : 2;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncMemory, AFileThatIsAllImpossiblePathIsPassedOverInNoMore) {
  constexpr std::size_t size = 48 << 20;
  for (const char* end : {"/..", "\\u0000"}) {
    addPath(std::string(size, 'x') + end);
    const auto disk = folder_.makeFolder("disk");
    const auto outcome = Testing::onSmallDisk(disk, 1 << 20, [&] {
      if (!limitMemory(size * 3 / 2)) return 1;
      return run() == "0 sent, 0 received" ? 0 : 2;
    });
    EXPECT_EQ(outcome, 0) << end;
  }
}

}  // namespace
}  // namespace Nimbrel
