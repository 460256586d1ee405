#include "Recording/NewName.h"

#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"

namespace Nimbrel::RecordingProcessor {

std::optional<std::string> takeNewName(const std::string& recording, std::string_view ending, const NameTaker& take) {
  const auto wanted =
      FilePath::join(FilePath::folder(recording), std::string(FilePath::baseName(recording)).append(ending));
  while (true) {
    const auto path = ShotFile::uniqueURL(wanted);
    if (take(path)) return path;
    // Where all names are taken there is no other one to try.
    const bool wasQuicker = FileSystem::isTaken(path) && ShotFile::uniqueURL(wanted) != path;
    if (!wasQuicker) return std::nullopt;
  }
}

}  // namespace Nimbrel::RecordingProcessor
