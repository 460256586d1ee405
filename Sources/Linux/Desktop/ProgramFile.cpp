#include "Linux/Desktop/ProgramFile.h"

#include "Foundation/FilePath.h"

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

#include <climits>
#include <fstream>
#include <string_view>
#include <vector>

namespace Nimbrel {

namespace {

constexpr std::string_view ourPrefix = "nimbrel";
// What the system adds once the file was replaced, as updates do.
constexpr std::string_view replaced = " (deleted)";

std::string placeOf(pid_t process, std::string_view name) {
  return "/proc/" + std::to_string(process) + "/" + std::string(name);
}

std::string_view folderOf(std::string_view path) { return path.substr(0, path.rfind('/')); }

}  // namespace

std::string programFileOf(pid_t process) {
  if (process <= 0) return {};
  std::vector<char> buffer(PATH_MAX);
  const auto length = ::readlink(placeOf(process, "exe").c_str(), buffer.data(), buffer.size());
  if (length <= 0) return {};
  std::string path(buffer.data(), static_cast<std::size_t>(length));
  if (path.ends_with(replaced)) path.resize(path.size() - replaced.size());
  return path;
}

bool isOurProcess(pid_t process) {
  const auto ours = programFileOf(::getpid());
  const auto theirs = programFileOf(process);
  if (theirs.empty()) return false;
  return theirs == ours ||
         (folderOf(theirs) == folderOf(ours) && FilePath::lastComponent(theirs).starts_with(ourPrefix));
}

std::string helperProgram(std::string_view name) {
  const auto folder = QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString();
  auto beside = FilePath::join(folder, name);
  if (::access(beside.c_str(), X_OK) == 0) return beside;
  return FilePath::join(FilePath::join(FilePath::folder(folder), "libexec/nimbrel"), name);
}

std::string sandboxedApplication(pid_t process) {
  constexpr std::string_view key = "name=";
  if (process <= 0) return {};
  std::ifstream info(placeOf(process, "root/.flatpak-info"));
  for (std::string line; std::getline(info, line);) {
    if (line.starts_with(key)) return line.substr(key.size());
  }
  return {};
}

}  // namespace Nimbrel
