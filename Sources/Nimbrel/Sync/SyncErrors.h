#pragma once

#include "Foundation/Result.h"

#include <string_view>

/// What ended a run, in words for people. Names that are too long for a line are cut.
namespace Nimbrel::SyncErrors {

[[nodiscard]] Error cannotRead(std::string_view what, const Error& reason);
[[nodiscard]] Error cannotWrite(std::string_view what, const Error& reason);
[[nodiscard]] Error cannotMakeFolder(std::string_view what, const Error& reason);
/// The library of the system refused.
[[nodiscard]] Error cannotEncrypt(std::string_view what);

}  // namespace Nimbrel::SyncErrors
