#include "Platform/Crypto.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <algorithm>
#include <string>
#include <string_view>

namespace Nimbrel {
namespace {

std::string bytes(std::string_view digits) {
  return QByteArray::fromHex(QByteArray(digits.data(), static_cast<qsizetype>(digits.size()))).toStdString();
}

template <class Bytes>
Bytes arrayOf(std::string_view digits) {
  Bytes array{};
  const auto source = bytes(digits);
  EXPECT_EQ(source.size(), array.size());
  std::ranges::copy(source, array.begin());
  return array;
}

struct Example {
  std::string_view key;
  std::string_view message;
  std::string_view signature;
};

// The first three of RFC 8032, section 7.1.
constexpr Example examples[]{
    {"d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a", "",
     "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe246"
     "55141438e7a100b"},
    {"3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c", "72",
     "92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302aeeb"
     "00d291612bb0c00"},
    {"fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025", "af82",
     "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc"
     "027beceea1ec40a"},
};

bool isSigned(const Example& example, std::string_view message) {
  return Crypto::isSigned(message, arrayOf<Crypto::Signature>(example.signature),
                          arrayOf<Crypto::PublicKey>(example.key));
}

TEST(Ed25519, VerifiesTheExamplesOfTheStandard) {
  for (const auto& example : examples) EXPECT_TRUE(isSigned(example, bytes(example.message))) << example.key;
}

TEST(Ed25519, AnotherMessageIsNotSigned) {
  EXPECT_FALSE(isSigned(examples[0], "x"));
  EXPECT_FALSE(isSigned(examples[1], bytes("73")));
  EXPECT_FALSE(isSigned(examples[1], ""));
  EXPECT_FALSE(isSigned(examples[2], bytes("af8200")));
}

TEST(Ed25519, EveryByteOfTheSignatureCounts) {
  const auto& example = examples[2];
  for (std::size_t i = 0; i < Crypto::Signature().size(); ++i) {
    auto signature = arrayOf<Crypto::Signature>(example.signature);
    signature.at(i) = static_cast<char>(signature.at(i) ^ 1);
    EXPECT_FALSE(Crypto::isSigned(bytes(example.message), signature, arrayOf<Crypto::PublicKey>(example.key))) << i;
  }
}

TEST(Ed25519, TheKeyOfAnotherDidNotSign) {
  EXPECT_FALSE(Crypto::isSigned(bytes(examples[2].message), arrayOf<Crypto::Signature>(examples[2].signature),
                                arrayOf<Crypto::PublicKey>(examples[1].key)));
}

}  // namespace
}  // namespace Nimbrel
