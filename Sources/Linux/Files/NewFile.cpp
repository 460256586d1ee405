#include "Platform/NewFile.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/ErrorWords.h"
#include "Linux/Files/FileIdentity.h"
#include "Linux/Files/Flushing.h"
#include "Linux/Files/HiddenFile.h"

#include <unistd.h>

#include <cerrno>

namespace Nimbrel::NewFile {

namespace {

int writeWhole(const std::string& path, std::string_view bytes) {
  const std::string folder(FilePath::folder(path));
  HiddenFile file(folder, HiddenFile::Access::everybody);
  if (file.error() != 0) return file.error();
  if (const int error = file.write(bytes.data(), bytes.size()); error != 0) return error;
  if (const int error = flush(file.number()); error != 0) return error;
  const FileIdentity ours(file.number());
  if (const int error = file.rename(path); error != 0) return error;
  const int error = flushFolder(folder);
  // By then somebody may have put another file there.
  if (error != 0 && ours.isAt(path)) ::unlink(path.c_str());
  return error;
}

}  // namespace

std::optional<Error> write(const std::string& path, std::string_view bytes) {
  if (path.find('\0') != std::string::npos) return Error{wordsFor(EINVAL)};
  if (const int error = writeWhole(path, bytes); error != 0) return Error{wordsFor(error)};
  return std::nullopt;
}

void discard(const std::string& path) { ::unlink(path.c_str()); }

}  // namespace Nimbrel::NewFile
