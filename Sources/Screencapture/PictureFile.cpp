#include "Screencapture/PictureFile.h"

#include "Foundation/FilePath.h"
#include "Platform/FileMove.h"
#include "Platform/FileSystem.h"
#include "Platform/MetadataStore.h"

#include <QFile>
#include <QImageWriter>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace Nimbrel::Screencapture {

namespace {

std::string_view captureType(CaptureRequest::Subject subject) {
  switch (subject) {
    case CaptureRequest::Subject::selection:
      return "selection";
    case CaptureRequest::Subject::window:
      return "window";
    case CaptureRequest::Subject::mainScreen:
      break;
  }
  return "display";
}

/// A new file with a hidden name beside the wanted one, which goes again unless it gets that.
class HiddenFile {
 public:
  explicit HiddenFile(std::string_view folder)
      : path_(FilePath::join(folder, ".nimbrel-XXXXXX")), number_(::mkostemp(path_.data(), O_CLOEXEC)) {
    if (number_ < 0) return;
    // As any program's new file: what the user's mask allows.
    const auto mask = ::umask(0);
    ::umask(mask);
    ::fchmod(number_, 0666 & ~mask);
  }
  ~HiddenFile() {
    if (number_ < 0) return;
    ::close(number_);
    ::unlink(path_.c_str());
  }
  HiddenFile(const HiddenFile&) = delete;
  HiddenFile& operator=(const HiddenFile&) = delete;

  [[nodiscard]] bool isOpen() const { return number_ >= 0; }
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] int number() const { return number_; }

 private:
  std::string path_;
  int number_;
};

Error failure(int error) { return Error{"The picture cannot be written: " + std::generic_category().message(error)}; }

/// Quick rather than small: the time until the file is there is what the user waits for.
constexpr int quickCompression = 85;

std::optional<Error> writeContent(const QImage& picture, int number) {
  QFile file;
  if (!file.open(number, QIODevice::WriteOnly)) return failure(EIO);
  QImageWriter writer(&file, "png");
  writer.setQuality(quickCompression);
  if (!writer.write(picture) || !file.flush()) return Error{"The picture cannot be written"};
  return ::fsync(number) == 0 ? std::nullopt : std::optional(failure(errno));
}

}  // namespace

std::optional<Error> writePicture(const QImage& picture, CaptureRequest::Subject subject, const std::string& path) {
  const auto target = std::filesystem::absolute(path).string();
  if (FileSystem::isTaken(target)) return failure(EEXIST);
  const HiddenFile file(FilePath::folder(target));
  if (!file.isOpen()) return failure(errno);
  if (auto error = writeContent(picture, file.number())) return error;
  // Where files keep no such notes, the name alone tells.
  static_cast<void>(MetadataStore::markScreenCapture(file.path(), captureType(subject)));
  return FileMove::move(file.path(), target);
}

}  // namespace Nimbrel::Screencapture
