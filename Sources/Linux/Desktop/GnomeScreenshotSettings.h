#pragma once

#include <optional>
#include <string>

namespace Nimbrel {

/// The folder that the user has set in GNOME's screenshot tool, as a path or a file URI; absent when the tool or the
/// setting is not there.
[[nodiscard]] std::optional<std::string> gnomeScreenshotFolder();

/// The path that a file URI stands for; absent when it is none of this machine.
[[nodiscard]] std::optional<std::string> pathFromFileUri(const std::string& uri);

}  // namespace Nimbrel
