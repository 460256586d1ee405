#pragma once

#include "Foundation/Result.h"
#include "Updates/UpdateCheck.h"

#include <string>

namespace Nimbrel {

/// The name that a download has as a file: the last part of its address where that is a plain file name of up to 100
/// letters, digits and ".", "-", "_", "+", "~", and begins with a letter or digit; else one by its version.
[[nodiscard]] std::string downloadName(const UpdateOffer& offer);

/// Writes the download into the folder, which is made where it is missing, under a name that is free there; returns the
/// path, or an error in words for the status line. Any thread.
[[nodiscard]] Result<std::string> saveDownload(const VerifiedUpdate& update, const std::string& folder);

}  // namespace Nimbrel
