#pragma once

#include <gio/gio.h>

#include <string>

namespace Nimbrel {

/// A text of the library's; empty where it has none.
[[nodiscard]] std::string textOf(const char* text);

/// What the application is shown by: a name for the icon theme, without what the formats of old have at its end, or the
/// absolute path of a picture. Empty when it names none.
[[nodiscard]] std::string iconOf(GAppInfo* application);

}  // namespace Nimbrel
