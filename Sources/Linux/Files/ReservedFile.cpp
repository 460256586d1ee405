#include "Linux/Files/ReservedFile.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/Renaming.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Nimbrel {

ReservedFile::ReservedFile(const std::string& path)
    : path_(path), placeholder_(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
  if (!placeholder_.isOpen()) {
    error_ = errno;
  } else {
    content_ = std::make_unique<HiddenFile>(std::string(FilePath::folder(path)), HiddenFile::Access::everybody);
  }
}

ReservedFile::~ReservedFile() {
  if (placeholder_.isOpen() && isOurs()) ::unlink(path_.c_str());
}

int ReservedFile::error() const { return error_ != 0 ? error_ : content_->error(); }

bool ReservedFile::isOurs() const {
  struct stat ours {};
  struct stat there {};
  return ::fstat(placeholder_.number(), &ours) == 0 && ::lstat(path_.c_str(), &there) == 0 &&
         ours.st_dev == there.st_dev && ours.st_ino == there.st_ino && there.st_size == 0;
}

int ReservedFile::commit() {
  struct stat facts {};
  if (::fstat(placeholder_.number(), &facts) != 0) return errno;
  ::fchmod(content_->number(), facts.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO));
  if (::fsync(content_->number()) != 0) return errno;
  if (const int error = isOurs() ? content_->replace(path_) : content_->rename(path_); error != 0) return error;
  placeholder_.close();
  const int error = flushFolder(std::string(FilePath::folder(path_)));
  if (error != 0) ::unlink(path_.c_str());
  return error;
}

}  // namespace Nimbrel
