#include "Linux/Files/Trashing.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/ErrorWords.h"
#include "Linux/Files/FileDescriptor.h"
#include "Linux/Files/Flushing.h"
#include "Linux/Files/Renaming.h"
#include "Linux/Files/TrashFolder.h"
#include "Linux/Files/TrashInfo.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string_view>

namespace Nimbrel {

namespace {

constexpr int namesTried = 1000;
constexpr std::string_view infoExtension = ".trashinfo";

enum class Trouble { None, WithFile, WithTrash };
struct Outcome {
  Trouble trouble = Trouble::None;
  int error = 0;
};

std::optional<Error> errorOf(const Outcome& outcome) {
  if (outcome.trouble == Trouble::None) return std::nullopt;
  if (outcome.trouble == Trouble::WithFile) return Error{wordsFor(outcome.error)};
  return Error{"The Trash cannot be used: " + wordsFor(outcome.error)};
}

int writeInfo(int file, std::string_view info) {
  const auto written = ::write(file, info.data(), info.size());
  if (written < 0) return errno;
  if (static_cast<std::size_t>(written) != info.size()) return ENOSPC;
  return ::fsync(file) == 0 ? 0 : errno;
}

/// 0 for a new file with this content on the disk, or the error.
int makeInfoFile(const std::string& path, std::string_view info) {
  const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!file.isOpen()) return errno;
  int error = writeInfo(file.number(), info);
  if (error == 0) error = flushFolder(std::string(FilePath::folder(path)));
  if (error != 0) ::unlink(path.c_str());
  return error;
}

std::string nameInTrash(std::string_view name, int number) {
  constexpr auto longest = FilePath::longestName - infoExtension.size();
  if (number == 1 && name.size() <= longest) return std::string(name);
  return FilePath::numberedName(name, number, longest);
}

/// The name in "info" is what reserves the one in "files", so it comes first.
Outcome put(const std::string& path, const TrashFolder& trash) {
  const auto start = trash.topFolder.size() + (trash.topFolder.ends_with('/') ? 0 : 1);
  const auto info = trashInfo(trash.topFolder.empty() ? path : path.substr(start), std::time(nullptr));
  for (int number = 1; number <= namesTried; ++number) {
    const auto name = nameInTrash(FilePath::lastComponent(path), number);
    const auto infoPath = trash.path + "/info/" + name + std::string(infoExtension);
    const int infoError = makeInfoFile(infoPath, info);
    if (infoError == EEXIST) continue;
    if (infoError != 0) return {Trouble::WithTrash, infoError};
    const int error = renameWithoutReplacing(path, trash.path + "/files/" + name);
    if (error == 0) return {};
    ::unlink(infoPath.c_str());
    if (error != EEXIST) return {Trouble::WithFile, error};
  }
  return {Trouble::WithTrash, EEXIST};
}

/// The path with the links on the way to its folder resolved; empty when that cannot be done.
std::string resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> folder(
      ::realpath(std::string(FilePath::folder(path)).c_str(), nullptr), &std::free);
  return folder ? FilePath::join(folder.get(), FilePath::lastComponent(path)) : std::string();
}

/// Whether a file of the folder would go to the home Trash, which need not be there yet.
bool sharesDevice(const std::string& folder, std::string trash) {
  struct stat ofFolder {};
  struct stat ofTrash {};
  if (::stat(folder.c_str(), &ofFolder) != 0) return false;
  while (::stat(trash.c_str(), &ofTrash) != 0) {
    if (trash == "/" || trash.empty()) return false;
    trash = FilePath::folder(trash);
  }
  return ofFolder.st_dev == ofTrash.st_dev;
}

Outcome putInHomeTrash(const std::string& path, const std::string& trash) {
  if (const int error = prepareTrash(trash); error != 0) return {Trouble::WithTrash, error};
  return put(path, {trash, {}});
}

std::optional<Error> putInTopTrash(const std::string& path) {
  const auto trash = preparedTopTrash(topFolderOf(std::string(FilePath::folder(path))));
  if (trash.error != 0) return Error{"There is no Trash on this disk: " + wordsFor(trash.error)};
  return errorOf(put(path, trash.folder));
}

}  // namespace

std::optional<Error> moveToTrash(const std::string& path, const std::optional<std::string>& homeTrash) {
  if (const int error = checkMovable(path); error != 0) return Error{wordsFor(error)};
  const auto file = resolved(path);
  if (file.empty()) return Error{wordsFor(errno)};
  if (homeTrash && sharesDevice(std::string(FilePath::folder(file)), *homeTrash)) {
    const auto outcome = putInHomeTrash(file, *homeTrash);
    // One device may be mounted in several places.
    if (outcome.error != EXDEV) return errorOf(outcome);
  }
  return putInTopTrash(file);
}

}  // namespace Nimbrel
