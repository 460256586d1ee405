#include "Platform/Crypto.h"

#include "Platform/Base64.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <algorithm>
#include <set>
#include <string>

namespace Nimbrel {
namespace {

using Crypto::Key;

std::string hex(std::string_view bytes) {
  return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())).toHex().toStdString();
}
std::string bytes(std::string_view digits) {
  return QByteArray::fromHex(QByteArray(digits.data(), static_cast<qsizetype>(digits.size()))).toStdString();
}

template <class Bytes>
Bytes arrayOf(std::string_view digits) {
  Bytes array{};
  std::ranges::copy(bytes(digits), array.begin());
  return array;
}

Key keyOf(std::string_view digits) { return Key(arrayOf<std::array<char, 32>>(digits)); }

std::string digestOf(std::string_view text) {
  const auto digest = Crypto::sha256(text);
  return digest ? hex({digest->data(), digest->size()}) : "none";
}

// The examples of FIPS 180-4.
TEST(Sha256, GivesTheDigestsOfTheStandard) {
  EXPECT_EQ(digestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(digestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(digestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(CryptoKey, IsTheDigestOfASecret) {
  const auto key = Key::digestOf("abc");
  ASSERT_TRUE(key.has_value());
  EXPECT_EQ(hex({key->bytes().data(), key->bytes().size()}), digestOf("abc"));
}

TEST(RandomBytes, DifferEachTime) {
  std::set<std::string> seen;
  for (int i = 0; i < 100; ++i) {
    std::string room(12, '\0');
    ASSERT_TRUE(Crypto::fillRandomly(room));
    seen.insert(room);
  }
  EXPECT_EQ(seen.size(), 100U);
}

// Test cases 13 to 15 of "The Galois/Counter Mode of Operation", those with 256 bits and without additional data.
struct Vector {
  std::string_view key;
  std::string_view nonce;
  std::string_view plain;
  std::string_view sealed;
  std::string_view tag;
};
constexpr std::string_view zeroKey = "0000000000000000000000000000000000000000000000000000000000000000";
constexpr std::string_view zeroNonce = "000000000000000000000000";
const Vector vectors[] = {
    {zeroKey, zeroNonce, "", "", "530f8afbc74536b9a963b4f1c4cb738b"},
    {zeroKey, zeroNonce, "00000000000000000000000000000000", "cea7403d4d606b6e074ec5d3baf39d18",
     "d0d1c8a799996bf0265b98b5d48ab919"},
    {"feffe9928665731c6d6a8f9467308308feffe9928665731c6d6a8f9467308308", "cafebabefacedbaddecaf888",
     "d9313225f88406e5a55909c5aff5269a86a7a9531534f7da2e4c303d8a318a72"
     "1c3c0c95956809532fcf0e2449a6b525b16aedf5aa0de657ba637b391aafd255",
     "522dc1f099567d07f47f37a32a84427d643a8cdcbfe5c0c97598a2bd2555d1aa"
     "8cb08e48590dbb3da7b08b1056828838c5f61e6393ba7a0abcc9f662898015ad",
     "b094dac5d93471bdec1a502270e3cc6c"},
};

TEST(CryptoOpener, OpensThePublishedVectors) {
  for (const auto& vector : vectors) {
    Crypto::Opener opener(keyOf(vector.key));
    auto text = bytes(vector.sealed);
    ASSERT_TRUE(opener.begin(arrayOf<Crypto::Nonce>(vector.nonce)));
    ASSERT_TRUE(opener.open(text));
    EXPECT_EQ(hex(text), vector.plain);
    EXPECT_TRUE(opener.isGenuine(arrayOf<Crypto::Tag>(vector.tag)));
  }
}

TEST(CryptoOpener, OpensInPiecesOfAnyLengthAndOneMessageAfterTheOther) {
  const auto& vector = vectors[2];
  Crypto::Opener opener(keyOf(vector.key));
  for (std::size_t length = 1; length < 40; ++length) {
    auto text = bytes(vector.sealed);
    ASSERT_TRUE(opener.begin(arrayOf<Crypto::Nonce>(vector.nonce)));
    for (std::size_t start = 0; start < text.size(); start += length) {
      ASSERT_TRUE(opener.open(std::span(text).subspan(start, std::min(length, text.size() - start))));
    }
    EXPECT_EQ(hex(text), vector.plain);
    EXPECT_TRUE(opener.isGenuine(arrayOf<Crypto::Tag>(vector.tag))) << length;
  }
}

TEST(CryptoOpener, AnyChangedBitIsNotGenuine) {
  const auto& vector = vectors[2];
  Crypto::Opener opener(keyOf(vector.key));
  const auto nonce = bytes(vector.nonce);
  const auto whole = nonce + bytes(vector.sealed) + bytes(vector.tag);
  for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
    auto changed = whole;
    changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ (1 << (bit % 8)));
    Crypto::Nonce changedNonce;
    Crypto::Tag changedTag;
    std::copy_n(changed.begin(), changedNonce.size(), changedNonce.begin());
    std::copy_n(changed.end() - changedTag.size(), changedTag.size(), changedTag.begin());
    ASSERT_TRUE(opener.begin(changedNonce));
    ASSERT_TRUE(opener.open(
        std::span(changed).subspan(changedNonce.size(), whole.size() - changedNonce.size() - changedTag.size())));
    EXPECT_FALSE(opener.isGenuine(changedTag)) << bit;
  }
}

TEST(CryptoSealer, SealsWhatTheOpenerOpensUnderANewNonceEachTime) {
  const auto key = keyOf(vectors[2].key);
  Crypto::Sealer sealer(key);
  Crypto::Opener opener(key);
  std::set<std::string> nonces;
  for (const std::size_t size : {0, 1, 15, 16, 17, 100'000}) {
    const std::string plain(size, 'p');
    auto text = plain;
    const auto nonce = sealer.begin();
    ASSERT_TRUE(nonce.has_value());
    nonces.insert(std::string(nonce->data(), nonce->size()));
    ASSERT_TRUE(sealer.seal(std::span(text).first(size / 3)));
    ASSERT_TRUE(sealer.seal(std::span(text).subspan(size / 3)));
    const auto tag = sealer.finish();
    ASSERT_TRUE(tag.has_value());
    EXPECT_EQ(text == plain, size == 0);
    ASSERT_TRUE(opener.begin(*nonce));
    ASSERT_TRUE(opener.open(text));
    EXPECT_TRUE(opener.isGenuine(*tag));
    EXPECT_EQ(text, plain);
  }
  EXPECT_EQ(nonces.size(), 6U);
}

std::string encoded(std::string_view plain) {
  std::string room(Base64::encodingRoom(plain.size()), 'x');
  room.resize(Base64::encode(plain, room));
  return room;
}

std::string decoded(std::string_view letters) {
  std::string room(letters.size(), 'x');
  const auto length = Base64::decode(letters, room);
  return length ? room.substr(0, *length) : "not base64";
}

// The examples of RFC 4648.
TEST(Base64, GivesAndTakesTheExamplesOfTheStandard) {
  const std::pair<std::string_view, std::string_view> examples[] = {
      {"", ""},
      {"f", "Zg=="},
      {"fo", "Zm8="},
      {"foo", "Zm9v"},
      {"foob", "Zm9vYg=="},
      {"fooba", "Zm9vYmE="},
      {"foobar", "Zm9vYmFy"},
      {"\xfb\xff\xfe", "+//+"},
  };
  for (const auto& [plain, letters] : examples) {
    EXPECT_EQ(encoded(plain), letters);
    EXPECT_EQ(encoded(plain).size(), Base64::encodedSize(plain.size()));
    EXPECT_EQ(decoded(letters), plain);
  }
}

TEST(Base64, OtherLettersAreNotDecoded) { EXPECT_EQ(decoded("Zm_v"), "not base64"); }

}  // namespace
}  // namespace Nimbrel
