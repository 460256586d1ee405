#pragma once

#include <optional>
#include <string>

/// What whoever took a screenshot left with the file. Any thread, no state.
namespace Nimbrel::MetadataStore {

/// Whether the file is a screen capture; absent when nothing was left, or nothing that is a yes or a no.
[[nodiscard]] std::optional<bool> isScreenCapture(const std::string& path);

/// "selection", "window", "display" or whatever else was left; absent when nothing was.
[[nodiscard]] std::optional<std::string> screenCaptureType(const std::string& path);

}  // namespace Nimbrel::MetadataStore
