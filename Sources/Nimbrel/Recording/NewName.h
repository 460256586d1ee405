#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel::RecordingProcessor {

/// Takes a path where nothing stands; false where it could not.
using NameTaker = std::function<bool(const std::string& path)>;

/// Takes the name beside a recording that has this ending instead of its extension, or the first one that is free, and
/// returns it; asks again when somebody else was quicker. Absent when no name could be taken.
[[nodiscard]] std::optional<std::string> takeNewName(const std::string& recording, std::string_view ending,
                                                     const NameTaker& take);

}  // namespace Nimbrel::RecordingProcessor
