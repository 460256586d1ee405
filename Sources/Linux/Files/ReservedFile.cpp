#include "Linux/Files/ReservedFile.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/FileIdentity.h"
#include "Linux/Files/Flushing.h"

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
  struct stat facts {};
  return FileIdentity(placeholder_.number()).isAt(path_) && ::fstat(placeholder_.number(), &facts) == 0 &&
         facts.st_size == 0;
}

int ReservedFile::commit() {
  struct stat facts {};
  if (::fstat(placeholder_.number(), &facts) != 0) return errno;
  ::fchmod(content_->number(), facts.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO));
  if (const int error = flush(content_->number()); error != 0) return error;
  const FileIdentity content(content_->number());
  if (const int error = isOurs() ? content_->replace(path_) : content_->rename(path_); error != 0) return error;
  placeholder_.close();
  const int error = flushFolder(std::string(FilePath::folder(path_)));
  // By then somebody may have put another file there.
  if (error != 0 && content.isAt(path_)) ::unlink(path_.c_str());
  return error;
}

}  // namespace Nimbrel
