#pragma once

#include "Foundation/Result.h"

namespace Nimbrel::Media {

/// What a negative number of FFmpeg's libraries means, in plain English.
[[nodiscard]] Error avError(int code);

/// Keeps the libraries from writing on standard error: what they complain about is an answer of ours, or passed over.
void quietLibraries();

}  // namespace Nimbrel::Media
