#pragma once

#include "Foundation/Result.h"

#include <string_view>

/// What ended a run, in words for people. Names that are too long for a line are cut.
namespace Nimbrel::SyncErrors {

[[nodiscard]] Error cannotRead(std::string_view what, const Error& reason);
[[nodiscard]] Error cannotWrite(std::string_view what, const Error& reason);
/// Some file of those that waited for their names together.
[[nodiscard]] Error cannotWriteToLibrary(const Error& reason);
[[nodiscard]] Error cannotWriteToVault(const Error& reason);
[[nodiscard]] Error cannotMakeFolder(std::string_view what, const Error& reason);
/// The library of the system refused.
[[nodiscard]] Error cannotEncrypt(std::string_view what);
[[nodiscard]] Error stopped();

}  // namespace Nimbrel::SyncErrors
