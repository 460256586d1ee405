#pragma once

#include "Catalogue/Database.h"
#include "Model/Models.h"

#include <string>
#include <vector>

namespace Nimbrel {

/// What a walk over the folders has seen: the image files, hidden ones left out.
struct DiskListing {
  std::vector<std::string> sourceFiles;   ///< of the source folders, read flat, in their order
  std::vector<std::string> libraryFiles;  ///< of the library and all folders below it
};

/// Reads the source folders and the library. A folder that cannot be read is empty.
[[nodiscard]] DiskListing listFolders(const std::vector<std::string>& sources, const std::string& libraryRoot);

/// What the catalogue lacks and what it may have lost.
struct ScanPlan {
  std::vector<std::string> newInSources;  ///< candidates: neither indexed nor ignored
  std::vector<std::string> newInLibrary;  ///< the same; all of them are shots
  ShotList unseen;                        ///< shots whose file the walk did not come across; not those that another
                                          ///< process has given another path since they were read
};

/// Compares the disk with the catalogue. Files of a source folder that lies in the library stand in both lists.
[[nodiscard]] ScanPlan planScan(const DiskListing& listing, const PathSet& indexed, const PathSet& ignored,
                                const ShotList& shots);

/// Whether a file found in a source folder is a screenshot: what its metadata says, else its name.
[[nodiscard]] bool isScreenshot(const std::string& path);

}  // namespace Nimbrel
