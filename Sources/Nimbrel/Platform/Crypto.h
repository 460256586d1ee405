#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

/// SHA-256, random bytes, signatures by Ed25519 (RFC 8032), and AES-256 in Galois/Counter Mode (NIST SP 800-38D) with a
/// nonce of 96 bits, a tag of 128 and no additional data. Any thread; an object on one thread at a time. Bytes are
/// chars, as in all of Nimbrel. What is absent or false here means that the library of the system refused, which it
/// does only when it is broken or out of memory, unless something else is said.
namespace Nimbrel::Crypto {

using Digest = std::array<char, 32>;
using Nonce = std::array<char, 12>;
using Tag = std::array<char, 16>;
using PublicKey = std::array<char, 32>;
using Signature = std::array<char, 64>;

/// The longest message that the mode allows under one nonce, in bytes.
inline constexpr std::uint64_t longestMessage = (std::uint64_t{1} << 36) - 32;

[[nodiscard]] std::optional<Digest> sha256(std::string_view bytes);

/// Fills the room with bytes that nobody can foretell.
[[nodiscard]] bool fillRandomly(std::span<char> room);

/// Whether the signature was made for exactly these bytes by whoever holds the other half of the key. Ed25519 itself,
/// without a hash before it.
[[nodiscard]] bool isSigned(std::string_view bytes, const Signature& signature, const PublicKey& key);

/// Gives back what the library of the system keeps for the calling thread, which may go on using it. At the end of work
/// in a thread that nobody joins: the library ends with the program, and a thread that ends at the same moment leaves
/// that behind.
void releaseThread();

/// A key of 256 bits, wiped in the end.
class Key {
 public:
  explicit Key(const std::array<char, 32>& bytes) : bytes_(bytes) {}
  /// The SHA-256 digest of the secret.
  [[nodiscard]] static std::optional<Key> digestOf(std::string_view secret);
  ~Key();
  Key(const Key&) = default;
  Key& operator=(const Key&) = default;

  [[nodiscard]] const std::array<char, 32>& bytes() const { return bytes_; }

 private:
  std::array<char, 32> bytes_;
};

/// The state that a cipher keeps, with its key; wiped in the end.
class CipherContext;

/// Seals messages, one after the other, each in pieces of any length.
class Sealer {
 public:
  explicit Sealer(const Key& key);
  ~Sealer();

  /// Begins a message under a random nonce of its own, and returns that.
  [[nodiscard]] std::optional<Nonce> begin();
  /// Turns the next piece into ciphertext where it stands. False also when the message becomes too long.
  [[nodiscard]] bool seal(std::span<char> piece);
  /// Ends the message.
  [[nodiscard]] std::optional<Tag> finish();

 private:
  std::unique_ptr<CipherContext> context_;
};

/// Opens messages, one after the other, each in pieces of any length.
class Opener {
 public:
  explicit Opener(const Key& key);
  ~Opener();

  /// Begins a message that was sealed under this nonce.
  [[nodiscard]] bool begin(const Nonce& nonce);
  /// Turns the next piece into plain bytes where it stands. Nothing may be made of them before isGenuine() says so.
  [[nodiscard]] bool open(std::span<char> piece);
  /// Ends the message. Whether it is, byte by byte, what the tag was made for with this key.
  [[nodiscard]] bool isGenuine(const Tag& tag);

 private:
  std::unique_ptr<CipherContext> context_;
};

}  // namespace Nimbrel::Crypto
