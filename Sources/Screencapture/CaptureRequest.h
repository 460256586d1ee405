#pragma once

#include "Foundation/Result.h"

#include <span>
#include <string>
#include <string_view>

namespace Nimbrel::Screencapture {

/// What one run of the program is to do.
struct CaptureRequest {
  enum class Subject { selection, window, mainScreen };
  enum class Kind { picture, movie };

  Subject subject = Subject::selection;
  Kind kind = Kind::picture;
  std::string path;  ///< the file to write

  bool operator==(const CaptureRequest&) const = default;
};

/// What the program ends with.
enum ExitStatus {
  Done = 0,     ///< the file is written, or the user cancelled and there is none
  Failed = 1,   ///< the reason is on standard error
  Misused = 2,  ///< the arguments are none of those known
  Refused = 3,  ///< the desktop does not let us, or something else holds keyboard or pointer
};

/// Reads exactly the lists that are known, each followed by "-d" and the file: "-i -s", "-i -w", "-m", "-v -i -Jvideo"
/// and "-v -m". The error is the usage.
[[nodiscard]] Result<CaptureRequest> captureRequest(std::span<const std::string_view> arguments);

}  // namespace Nimbrel::Screencapture
