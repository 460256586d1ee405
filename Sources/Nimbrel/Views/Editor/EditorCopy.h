#pragma once

#include "Model/Annotation.h"
#include "Store/HeicEncodings.h"

#include <atomic>
#include <span>
#include <string>

/// The copy that the editor writes beside the picture it shows.
namespace Nimbrel::EditorCopy {

/// The path of the copy if it were free: the source's name without its extension, and what was done. Always a PNG.
[[nodiscard]] std::string wantedPath(const std::string& source, std::span<const Annotation> items);

/// What became of it.
enum class Outcome {
  Written,
  NotRendered,  ///< the source cannot be read, or is not the file that was shown
  NotWritten,
  GivenUp,
};
struct Saved {
  Outcome outcome = Outcome::GivenUp;
  std::string path;  ///< of the copy, once it is written
};

/// Burns the marks into a copy of the source, unless the source has changed since it was in the given state: marks
/// would not cover what they were put on. Nothing is written once it is given up. Any thread; takes a while.
[[nodiscard]] Saved save(const std::string& source, const FileState& shown, std::span<const Annotation> items,
                         const std::atomic<bool>& isGivenUp);

}  // namespace Nimbrel::EditorCopy
