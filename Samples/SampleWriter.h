#pragma once

#include "Foundation/Result.h"

#include <QDateTime>

#include <string>

namespace Nimbrel::Samples {

/// Makes the home of the sample library in the folder, an absolute path, as seen at the moment `now`; returns the
/// number of pictures. Pictures and settings of a former run are replaced. A file that stands in the way and is not
/// from such a run is an error, and stays as it is.
[[nodiscard]] Result<int> writeSampleHome(const std::string& folder, const QDateTime& now);

}  // namespace Nimbrel::Samples
