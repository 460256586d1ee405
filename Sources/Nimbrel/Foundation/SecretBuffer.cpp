#include "Foundation/SecretBuffer.h"

#include "Foundation/Wipe.h"

#include <algorithm>
#include <new>

namespace Nimbrel {

namespace {

/// Smaller rooms grow in large steps, so that files of rising size do not have it made anew for each.
constexpr std::size_t smallRoom = std::size_t{4} << 20;

}  // namespace

SecretBuffer::~SecretBuffer() { wipe(bytes()); }

bool SecretBuffer::makeRoom(std::size_t size) {
  if (size <= size_) return true;
  const auto room = std::max(size, std::min(2 * size_, smallRoom));
  wipe(bytes());
  // Given back first: at no moment there are two.
  bytes_.reset();
  size_ = 0;
  // Without a value for each byte, which would cost as much as the work itself.
  bytes_.reset(new (std::nothrow) char[room]);
  if (bytes_) size_ = room;
  return bytes_ != nullptr;
}

}  // namespace Nimbrel
