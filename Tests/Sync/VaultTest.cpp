#include "Sync/Vault.h"

#include <gtest/gtest.h>

#include <string>

namespace Nimbrel {
namespace {

std::string failureOf(std::string_view passphrase) {
  const auto key = Vault::key(passphrase);
  return key ? "a key" : key.error().message;
}

std::string keyBytes(std::string_view passphrase) {
  const auto key = Vault::key(passphrase).value();
  return {key.bytes().data(), key.bytes().size()};
}

constexpr const char* tooShort = "Use a passphrase with at least 8 characters";

TEST(VaultKey, NeedsEightCharacters) {
  EXPECT_EQ(failureOf(""), tooShort);
  EXPECT_EQ(failureOf("1234567"), tooShort);
  EXPECT_EQ(failureOf("12345678"), "a key");
  EXPECT_EQ(failureOf("        "), "a key");
}

TEST(VaultKey, CountsCharactersAsPeopleDo) {
  const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466";
  EXPECT_EQ(failureOf("letters" + family), "a key");
  EXPECT_EQ(failureOf("letter" + family), tooShort);
  EXPECT_EQ(failureOf("\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4"), tooShort) << "fourteen bytes";
  EXPECT_EQ(failureOf("a\u0308a\u0308a\u0308a\u0308a\u0308a\u0308a\u0308"), tooShort) << "fourteen code points";
}

TEST(VaultKey, IsTheDigestOfThePassphraseAsItWasTyped) {
  // What sha256sum makes of it.
  EXPECT_EQ(keyBytes("correct horse").substr(0, 4),
            "\x41"
            "\x04"
            "\xd3"
            "\x6f");
  EXPECT_NE(keyBytes("correct horse"), keyBytes("correct horse "));
  EXPECT_NE(keyBytes("caf\u00e9 au lait"), keyBytes("cafe\u0301 au lait"));
}

TEST(VaultFileName, IsTheDigestOfThePathInLowerCase) {
  EXPECT_EQ(Vault::fileName("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad.nimbrelvault");
  EXPECT_NE(Vault::fileName("a/b.png"), Vault::fileName("a//b.png"));
}

TEST(VaultFileName, IsKnownByItsExtensionAlone) {
  EXPECT_TRUE(Vault::isFileName("a.nimbrelvault"));
  EXPECT_TRUE(Vault::isFileName("a b.png.nimbrelvault"));
  for (const char* name :
       {"a.nimbrelVault", "a.nimbrelvault2", "nimbrelvault", ".nimbrelvault", "a.nimbrelvault.", "a"}) {
    EXPECT_FALSE(Vault::isFileName(name)) << name;
  }
}

}  // namespace
}  // namespace Nimbrel
