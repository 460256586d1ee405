#include "Linux/Files/HiddenFile.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/Renaming.h"

#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

namespace Nimbrel {

namespace {

constexpr std::string_view letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t nameLength = 6;

std::string hiddenName() {
  std::string name = ".nimbrel-";
  for (std::size_t i = 0; i < nameLength; ++i) {
    name += letters[QRandomGenerator::global()->bounded(static_cast<quint32>(letters.size()))];
  }
  return name;
}

}  // namespace

HiddenFile::HiddenFile(const std::string& folder, Access access) {
  do {
    path_ = FilePath::join(folder, hiddenName());
    file_ = FileDescriptor(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, static_cast<mode_t>(access)));
    error_ = file_.isOpen() ? 0 : errno;
  } while (error_ == EEXIST);
}

HiddenFile::~HiddenFile() {
  if (file_.isOpen()) ::unlink(path_.c_str());
}

int HiddenFile::write(const char* bytes, std::size_t count) {
  while (count > 0) {
    const auto written = ::write(file_.number(), bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
  return 0;
}

int HiddenFile::rename(const std::string& path) {
  const int error = renameWithoutReplacing(path_, path);
  if (error == 0) file_.close();
  return error;
}

int HiddenFile::replace(const std::string& path) {
  if (::rename(path_.c_str(), path.c_str()) != 0) return errno;
  file_.close();
  return 0;
}

}  // namespace Nimbrel
