#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What whoever took a screenshot leaves with the file. Any thread, no state.
namespace Nimbrel::MetadataStore {

/// Whether the file is a screen capture; absent when nothing was left, or nothing that is a yes or a no.
[[nodiscard]] std::optional<bool> isScreenCapture(const std::string& path);

/// "selection", "window", "display" or whatever else was left; absent when nothing was.
[[nodiscard]] std::optional<std::string> screenCaptureType(const std::string& path);

/// Leaves with a file, links followed, that it is a screen capture of that type. False when the file system keeps no
/// such notes, when the file is not ours to change, or for a type too long to be read again.
[[nodiscard]] bool markScreenCapture(const std::string& path, std::string_view type);

/// Leaves with a file, links followed, that it is no screen capture, whatever its name says. False as above.
[[nodiscard]] bool markNoScreenCapture(const std::string& path);

}  // namespace Nimbrel::MetadataStore
