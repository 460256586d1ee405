#include "Foundation/SecretBuffer.h"
#include "Foundation/Wipe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace Nimbrel {
namespace {

TEST(Wipe, OverwritesBytesWhereTheyStand) {
  std::string secret = "a secret";
  wipe(std::span(secret).subspan(2));
  EXPECT_EQ(secret, std::string("a ") + std::string(6, '\0'));
  wipe(std::span<char>());
}

TEST(Wipe, EmptiesATextAndOverwritesAllOfItsRoom) {
  std::string secret = "a secret";
  secret.reserve(secretRoom);
  const char* const room = secret.data();
  wipe(secret);
  EXPECT_TRUE(secret.empty());
  ASSERT_EQ(secret.data(), room);
  EXPECT_TRUE(std::all_of(room, room + 8, [](char c) { return c == '\0'; }));
}

TEST(SecretBuffer, GrowsAndNeverShrinks) {
  SecretBuffer buffer;
  EXPECT_TRUE(buffer.bytes().empty());
  ASSERT_TRUE(buffer.makeRoom(100));
  ASSERT_GE(buffer.bytes().size(), 100U);
  std::ranges::fill(buffer.bytes(), 'x');
  const auto* const room = buffer.bytes().data();
  ASSERT_TRUE(buffer.makeRoom(50));
  EXPECT_EQ(buffer.bytes().data(), room);
  EXPECT_EQ(buffer.bytes().front(), 'x');
  ASSERT_TRUE(buffer.makeRoom(10'000'000));
  EXPECT_EQ(buffer.bytes().size(), 10'000'000U);
}

TEST(SecretBuffer, SaysWhenThereIsNoMemory) {
  SecretBuffer buffer;
  ASSERT_TRUE(buffer.makeRoom(10));
  EXPECT_FALSE(buffer.makeRoom(std::numeric_limits<std::ptrdiff_t>::max()));
  EXPECT_TRUE(buffer.bytes().empty());
  EXPECT_TRUE(buffer.makeRoom(10));
}

}  // namespace
}  // namespace Nimbrel
