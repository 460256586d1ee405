#include "Platform/FileMove.h"

#include "Linux/Files/CopyingMove.h"
#include "Linux/Files/ErrorWords.h"
#include "Linux/Files/Renaming.h"
#include "Platform/FileSystem.h"

#include <cerrno>
#include <climits>
#include <filesystem>
#include <system_error>

namespace Nimbrel::FileMove {

namespace {

bool holdsZero(const std::string& path) { return path.find('\0') != std::string::npos; }

}  // namespace

std::optional<Error> createFolders(const std::string& path) {
  if (holdsZero(path)) return Error{wordsFor(EINVAL)};
  // The library would first take a path of any length apart.
  if (path.size() >= PATH_MAX) return Error{wordsFor(ENAMETOOLONG)};
  std::error_code error;
  std::filesystem::create_directories(path, error);
  if (!error) return std::nullopt;
  // A link that leads nowhere is in the way as well.
  return Error{wordsFor(error == std::errc::file_exists ? ENOTDIR : error.value())};
}

std::optional<Error> move(const std::string& from, const std::string& to) {
  if (holdsZero(from) || holdsZero(to)) return Error{wordsFor(EINVAL)};
  if (const int error = checkMovable(from); error != 0) return Error{wordsFor(error)};
  int error = renameWithoutReplacing(from, to);
  if (error == EXDEV) error = moveByCopying(from, to);
  if (error == 0) return std::nullopt;
  if (error == ENOENT && FileSystem::isTaken(from)) return Error{"The folder is not there"};
  return Error{wordsFor(error)};
}

}  // namespace Nimbrel::FileMove
