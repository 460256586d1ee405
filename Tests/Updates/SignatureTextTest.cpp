#include "Updates/SignatureText.h"

#include "Support/Ed25519Key.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

using Testing::base64Of;
using Testing::Ed25519Key;

TEST(SignatureText, KeysAndSignaturesAreReadBack) {
  const Ed25519Key key;
  EXPECT_EQ(publicKeyFrom(key.publicKeyText()), key.publicKey());
  EXPECT_EQ(signatureFrom(key.signatureText("download")), key.sign("download"));
}

TEST(SignatureText, AnotherLengthIsNone) {
  for (const std::size_t length : {0, 1, 31, 33, 63, 65, 96}) {
    const auto text = base64Of(std::string(length, 'x'));
    EXPECT_FALSE(publicKeyFrom(text)) << length;
    EXPECT_FALSE(signatureFrom(text)) << length;
  }
  // Of the same number of letters.
  EXPECT_FALSE(publicKeyFrom(base64Of(std::string(33, 'x'))));
  EXPECT_FALSE(signatureFrom(base64Of(std::string(66, 'x'))));
}

TEST(SignatureText, WhatIsNoBase64IsNone) {
  const Ed25519Key key;
  for (const char wrong : {' ', '\n', '-', '_', '*', '\0', '\xe4'}) {
    auto text = key.publicKeyText();
    text[7] = wrong;
    EXPECT_FALSE(publicKeyFrom(text)) << static_cast<int>(wrong);
    text = key.signatureText("download");
    text[7] = wrong;
    EXPECT_FALSE(signatureFrom(text)) << static_cast<int>(wrong);
  }
}

}  // namespace
}  // namespace Nimbrel
