#pragma once

#include <cstdlib>
#include <memory>

namespace Nimbrel::Screencapture {

/// What the X11 library hands out with malloc().
struct FreeAllocated {
  void operator()(void* thing) const { std::free(thing); }
};
template <class T>
using XcbOwned = std::unique_ptr<T, FreeAllocated>;

}  // namespace Nimbrel::Screencapture
