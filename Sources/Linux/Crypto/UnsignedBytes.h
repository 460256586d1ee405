#pragma once

namespace Nimbrel {

/// Our bytes as the library wants them.
[[nodiscard]] inline unsigned char* unsignedBytes(char* bytes) { return reinterpret_cast<unsigned char*>(bytes); }
[[nodiscard]] inline const unsigned char* unsignedBytes(const char* bytes) {
  return reinterpret_cast<const unsigned char*>(bytes);
}

}  // namespace Nimbrel
