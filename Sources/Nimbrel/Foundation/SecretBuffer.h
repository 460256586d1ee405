#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace Nimbrel {

/// Room for bytes that no memory is to keep: they are overwritten before the room is given back. Grows and never
/// shrinks, so that one serves for many files in turn. One thread at a time.
class SecretBuffer {
 public:
  SecretBuffer() = default;
  ~SecretBuffer();
  SecretBuffer(const SecretBuffer&) = delete;
  SecretBuffer& operator=(const SecretBuffer&) = delete;

  /// Room for so many bytes, with anything in them; what was there before is lost when it has to grow. False when there
  /// is no memory for that.
  [[nodiscard]] bool makeRoom(std::size_t size);

  /// All of the room.
  [[nodiscard]] std::span<char> bytes() { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;
};

}  // namespace Nimbrel
