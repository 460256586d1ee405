#pragma once

#include "Store/Store.h"

#include <iosfwd>

namespace Nimbrel {

enum class Verbosity { Summary, HashLines };

/// The rest of a headless pass, once its Store has scanned: hashes what has no hash, counts what looks sensitive, and
/// prints the summary with the newest twenty shots.
void finishHeadlessRun(Store& store, Verbosity verbosity, std::ostream& output);

}  // namespace Nimbrel
