// What may be left of a passphrase in the memory of the process that has used it: nothing.

#include "Foundation/Wipe.h"
#include "Store/SyncRun.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"
#include "Sync/Vault.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {
namespace {

constexpr char mask = 0x55;

/// Bytes as they stand nowhere in this program, so that a search for them does not find itself.
template <std::size_t size>
using Masked = std::array<char, size>;

template <std::size_t size>
consteval Masked<size - 1> masked(const char (&text)[size]) {
  Masked<size - 1> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(text[i] ^ mask);
  return bytes;
}

/// Short enough to lie within a string itself.
constexpr auto shortPassphrase = masked("purple umbrella");
/// Too long for whoever owns its memory next to write over all of it.
constexpr auto longPassphrase = [] {
  Masked<500> bytes{};
  std::uint32_t state = 1;
  for (auto& byte : bytes) {
    state = (state * 1'103'515'245 + 12'345) & 0x7FFFFFFF;
    byte = static_cast<char>(('a' + static_cast<char>((state >> 16) % 26)) ^ mask);
  }
  return bytes;
}();
// What sha256sum makes of them.
constexpr auto shortKey = masked(
    "\x0e\xdd\x88\x32\xcc\x82\xb6\x70\x1a\x5a\x97\x56\x92\xc5\x69\x9f"
    "\xb7\xee\x5a\x6c\x2a\x48\xf9\xde\xd3\x5d\x1c\xbc\x90\x94\x50\x5c");
constexpr auto longKey = masked(
    "\x39\x6d\xe2\x78\x5e\x00\x06\x25\x77\x94\xf1\x5f\x10\x8c\xa8\x58"
    "\x81\x84\x8c\xee\x5e\x6a\x29\x3c\xde\xab\x89\x80\x7a\x55\x39\x1a");
constexpr auto content = masked("a picture that nobody else may see, far too long for the shortest of texts");

std::string unmasked(std::string_view bytes) {
  std::string text;
  text.reserve(secretRoom);
  for (const char byte : bytes) text += static_cast<char>(byte ^ mask);
  return text;
}

template <std::size_t size>
std::string unmasked(const Masked<size>& bytes) {
  return unmasked(std::string_view(bytes.data(), size));
}

/// Without a buffer that would keep them.
void writeUnmasked(const std::string& path, std::string_view bytes) {
  auto text = unmasked(bytes);
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  EXPECT_EQ(::write(file, text.data(), text.size()), std::ssize(text));
  ::close(file);
  wipe(text);
}

struct Range {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
};

/// All that this process can write to: heap, stacks, variables.
std::vector<Range> writableRanges() {
  // What a sanitizer reserves for its own books is larger than any machine.
  constexpr std::uintptr_t largest = std::uintptr_t{16} << 30;
  std::vector<Range> ranges;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    std::istringstream fields(line);
    Range range;
    std::string permissions;
    fields >> std::hex >> range.begin;
    fields.ignore(1);
    fields >> range.end >> permissions;
    if (permissions.starts_with("rw") && range.end - range.begin < largest) ranges.push_back(range);
  }
  return ranges;
}

bool isIn(std::string_view bytes, std::string_view secret) {
  const auto isSame = [](char byte, char hidden) { return static_cast<char>(byte ^ mask) == hidden; };
  return std::search(bytes.begin(), bytes.end(), secret.begin(), secret.end(), isSame) != bytes.end();
}

/// Whether the masked bytes stand in the memory of this process.
bool standsInMemory(std::string_view secret) {
  const int memory = ::open("/proc/self/mem", O_RDONLY | O_CLOEXEC);
  EXPECT_GE(memory, 0);
  std::string piece(1 << 20, '\0');
  bool isFound = false;
  for (const auto& [begin, end] : writableRanges()) {
    // Each piece begins with the end of the last one, where a secret could be cut in two.
    for (auto at = begin; at + secret.size() <= end && !isFound; at += piece.size() - secret.size()) {
      const auto length = ::pread(memory, piece.data(), std::min(piece.size(), end - at), static_cast<off_t>(at));
      isFound = length > 0 && isIn({piece.data(), static_cast<std::size_t>(length)}, secret);
    }
  }
  ::close(memory);
  // Else the next search would find what this one has.
  wipe(piece);
  return isFound;
}

/// Whether any part of the bytes stands there: memory that was given back loses some to its next owner.
template <std::size_t size>
bool isInMemory(const Masked<size>& secret) {
  constexpr std::size_t part = std::min<std::size_t>(size / 2, 32);
  for (std::size_t start = 0; start + part <= size; start += part) {
    if (standsInMemory({secret.data() + start, part})) return true;
  }
  return false;
}

class SyncSecrets : public ::testing::Test {
 protected:
  SyncSecrets() {
    QObject::connect(&run_, &SyncRun::ended, &run_, [this](const Result<SyncResult>& result) { result_ = result; });
    callEverythingOnce();
  }

  /// A run that sends a picture and one that receives it.
  template <std::size_t size>
  void runBothWays(const Masked<size>& passphrase, std::string_view picture = {content.data(), content.size()}) {
    auto secret = unmasked(passphrase);
    const auto path = folder_.makeFolder("library") + "/a.png";
    writeUnmasked(path, picture);
    EXPECT_EQ(run(secret), (SyncResult{.exported = 1, .imported = 0}));
    std::filesystem::remove(path);
    EXPECT_EQ(run(secret), (SyncResult{.exported = 0, .imported = 1}));
    wipe(secret);
  }

 private:
  /// With other secrets: the first call of a function in a library lays the registers on the stack, with what they
  /// hold.
  void callEverythingOnce() {
    constexpr auto others = masked("nobody needs to hide this at all");
    runBothWays(others, {others.data(), others.size()});
    static_cast<void>(isInMemory(others));
  }

  [[nodiscard]] SyncResult run(std::string_view secret) {
    result_.reset();
    run_.start(folder_.path("library"), folder_.path("vault"), secret);
    EXPECT_TRUE(Testing::waitUntil([this] { return result_.has_value(); }));
    return result_ && *result_ ? result_->value() : SyncResult();
  }

  Testing::TemporaryFolder folder_;
  SyncRun run_;
  std::optional<Result<SyncResult>> result_;
};

TEST_F(SyncSecrets, ASearchFindsWhatIsHeld) {
  auto shortOne = unmasked(shortPassphrase);
  auto longOne = unmasked(longPassphrase);
  EXPECT_TRUE(isInMemory(shortPassphrase));
  EXPECT_TRUE(isInMemory(longPassphrase));
  {
    const std::array held{Vault::key(shortOne), Vault::key(longOne)};
    EXPECT_TRUE(isInMemory(shortKey)) << "it is the key of the passphrase";
    EXPECT_TRUE(isInMemory(longKey));
  }
  wipe(shortOne);
  wipe(longOne);
  EXPECT_FALSE(isInMemory(shortPassphrase));
  EXPECT_FALSE(isInMemory(longPassphrase));
  EXPECT_FALSE(isInMemory(shortKey));
  EXPECT_FALSE(isInMemory(longKey));
}

TEST_F(SyncSecrets, NothingIsLeftOfAShortPassphraseAndItsKeyAfterARun) {
  runBothWays(shortPassphrase);
  EXPECT_FALSE(isInMemory(shortPassphrase));
  EXPECT_FALSE(isInMemory(shortKey));
}

TEST_F(SyncSecrets, NothingIsLeftOfALongPassphraseAndItsKeyAfterARun) {
  runBothWays(longPassphrase);
  EXPECT_FALSE(isInMemory(longPassphrase));
  EXPECT_FALSE(isInMemory(longKey));
}

TEST_F(SyncSecrets, NothingIsLeftOfTheContentsOfFilesAfterARun) {
  runBothWays(shortPassphrase);
  EXPECT_FALSE(isInMemory(content));
}

}  // namespace
}  // namespace Nimbrel
