#include "Platform/Crypto.h"

#include "Foundation/Wipe.h"
#include "Linux/Crypto/UnsignedBytes.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <algorithm>
#include <climits>
#include <utility>

namespace Nimbrel::Crypto {

std::optional<Digest> sha256(std::string_view bytes) {
  // Right where it is returned, since it may be a key: nobody wipes a copy that is left here.
  std::optional<Digest> digest(std::in_place);
  auto* room = unsignedBytes(digest->data());
  if (EVP_Digest(bytes.data(), bytes.size(), room, nullptr, EVP_sha256(), nullptr) != 1) digest.reset();
  return digest;
}

bool fillRandomly(std::span<char> room) {
  while (!room.empty()) {
    const auto length = std::min<std::size_t>(room.size(), INT_MAX);
    if (RAND_bytes(unsignedBytes(room.data()), static_cast<int>(length)) != 1) return false;
    room = room.subspan(length);
  }
  return true;
}

void releaseThread() { OPENSSL_thread_stop(); }

std::optional<Key> Key::digestOf(std::string_view secret) {
  auto digest = sha256(secret);
  if (!digest) return std::nullopt;
  std::optional<Key> key(*digest);
  wipe(*digest);
  return key;
}

Key::~Key() { wipe(bytes_); }

/// The schedule of the key is worked out once for all messages.
class CipherContext {
 public:
  enum class Direction { Opening = 0, Sealing = 1 };

  CipherContext(const Key& key, Direction direction) {
    const auto* bytes = unsignedBytes(key.bytes().data());
    isReady_ = context_ != nullptr && EVP_CipherInit_ex(context_.get(), EVP_aes_256_gcm(), nullptr, bytes, nullptr,
                                                        static_cast<int>(direction)) == 1;
  }

  [[nodiscard]] bool begin(const Nonce& nonce) {
    return isReady_ &&
           EVP_CipherInit_ex(context_.get(), nullptr, nullptr, nullptr, unsignedBytes(nonce.data()), -1) == 1;
  }

  [[nodiscard]] bool update(std::span<char> piece) {
    while (!piece.empty()) {
      const auto length = static_cast<int>(std::min(piece.size(), longestPiece));
      auto* bytes = unsignedBytes(piece.data());
      int written = 0;
      if (EVP_CipherUpdate(context_.get(), bytes, &written, bytes, length) != 1 || written != length) return false;
      piece = piece.subspan(static_cast<std::size_t>(length));
    }
    return true;
  }

  /// For sealing, makes the tag ready to be taken; for opening, compares it with the one expected.
  [[nodiscard]] bool finish() {
    unsigned char nothing = 0;
    int written = 0;
    return EVP_CipherFinal_ex(context_.get(), &nothing, &written) == 1;
  }

  [[nodiscard]] std::optional<Tag> takeTag() {
    Tag tag;
    const bool isTaken = EVP_CIPHER_CTX_ctrl(context_.get(), EVP_CTRL_AEAD_GET_TAG, tag.size(), tag.data()) == 1;
    return isTaken ? std::optional(tag) : std::nullopt;
  }

  [[nodiscard]] bool expectTag(Tag tag) {
    return EVP_CIPHER_CTX_ctrl(context_.get(), EVP_CTRL_AEAD_SET_TAG, tag.size(), tag.data()) == 1;
  }

 private:
  /// The library counts in int.
  static constexpr std::size_t longestPiece = std::size_t{1} << 30;

  struct Free {
    void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
  };

  std::unique_ptr<EVP_CIPHER_CTX, Free> context_{EVP_CIPHER_CTX_new()};
  bool isReady_ = false;
};

Sealer::Sealer(const Key& key) : context_(std::make_unique<CipherContext>(key, CipherContext::Direction::Sealing)) {}

Sealer::~Sealer() = default;

std::optional<Nonce> Sealer::begin() {
  Nonce nonce;
  return fillRandomly(nonce) && context_->begin(nonce) ? std::optional(nonce) : std::nullopt;
}

bool Sealer::seal(std::span<char> piece) { return context_->update(piece); }

std::optional<Tag> Sealer::finish() { return context_->finish() ? context_->takeTag() : std::nullopt; }

Opener::Opener(const Key& key) : context_(std::make_unique<CipherContext>(key, CipherContext::Direction::Opening)) {}

Opener::~Opener() = default;

bool Opener::begin(const Nonce& nonce) { return context_->begin(nonce); }

bool Opener::open(std::span<char> piece) { return context_->update(piece); }

bool Opener::isGenuine(const Tag& tag) { return context_->expectTag(tag) && context_->finish(); }

}  // namespace Nimbrel::Crypto
