#pragma once

#include <cstdint>
#include <string>

namespace Nimbrel::Benchmarks {

/// What a made catalogue holds.
struct MadeCatalogue {
  std::int64_t textBytes = 0;  ///< of all text columns together
};

/// Fills the catalogue in `folder` with so many shots of about 1.2 KB of text each, filed below `library` by month,
/// with a hash and done with recognition. The same every time.
MadeCatalogue makeCatalogue(const std::string& folder, const std::string& library, int shots);

/// Makes the files of such a catalogue, empty.
void makeLibraryFiles(const std::string& library, int shots);

}  // namespace Nimbrel::Benchmarks
