#include "Linux/Files/HiddenFile.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/Renaming.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace Nimbrel {

HiddenFile::HiddenFile(const std::string& folder)
    : path_(FilePath::join(folder, ".nimbrel-XXXXXX")), file_(::mkostemp(path_.data(), O_CLOEXEC)) {
  if (!file_.isOpen()) error_ = errno;
}

HiddenFile::~HiddenFile() {
  if (file_.isOpen()) ::unlink(path_.c_str());
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
