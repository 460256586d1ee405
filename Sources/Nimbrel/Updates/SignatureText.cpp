#include "Updates/SignatureText.h"

#include "Platform/Base64.h"

#include <algorithm>
#include <tuple>

namespace Nimbrel {

namespace {

template <class Bytes>
std::optional<Bytes> bytesFrom(std::string_view text) {
  constexpr auto size = std::tuple_size_v<Bytes>;
  constexpr auto letters = Base64::encodedSize(size);
  if (text.size() != letters) return std::nullopt;
  std::array<char, letters / 4 * 3> room{};
  if (Base64::decode(text, room) != size) return std::nullopt;
  Bytes bytes;
  std::copy_n(room.begin(), size, bytes.begin());
  return bytes;
}

}  // namespace

std::optional<Crypto::PublicKey> publicKeyFrom(std::string_view text) { return bytesFrom<Crypto::PublicKey>(text); }

std::optional<Crypto::Signature> signatureFrom(std::string_view text) { return bytesFrom<Crypto::Signature>(text); }

}  // namespace Nimbrel
