#include "Foundation/Wipe.h"

#include <cstring>

namespace Nimbrel {

namespace {

// A compiler may leave out what is written and never read. It cannot know what is called through this.
void* (*const volatile fill)(void*, int, std::size_t) = std::memset;

}  // namespace

void wipe(std::span<char> secret) {
  if (!secret.empty()) fill(secret.data(), 0, secret.size());
}

void wipe(std::string& secret) {
  secret.resize(secret.capacity());
  wipe(std::span(secret));
  secret.clear();
}

}  // namespace Nimbrel
