// Pictures that come without a file.

#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include "Foundation/Background.h"
#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "Platform/ImageFile.h"

#include <QThreadPool>

namespace Nimbrel {

namespace {

constexpr int mostNames = 100;

struct Written {
  std::string path;
  std::optional<Error> failure;
};

/// Two pictures of one second want one name; the second of them gets another. Any thread.
Written writePicture(const QImage& picture, const std::string& wanted) {
  Written written{.path = ShotFile::uniqueURL(wanted), .failure = {}};
  for (int i = 0; i < mostNames; ++i) {
    written.failure = ImageFile::writePNG(picture, written.path);
    if (!written.failure || !FileSystem::isTaken(written.path)) break;
    written.path = ShotFile::uniqueURL(wanted);
  }
  return written;
}

}  // namespace

void Store::importPicture(const QImage& picture) {
  const auto path = captureLocation(CaptureMode::area, CaptureDestination::inbox);
  if (const auto failure = makeFolder(std::string(FilePath::folder(path)))) {
    return setStatus("Could not save the picture: " + failure->message);
  }
  inBackground(
      this, *QThreadPool::globalInstance(), [picture, path] { return writePicture(picture, path); },
      [this](const Written& written) {
        if (written.failure) return setStatus("Could not save the picture: " + written.failure->message);
        importFiles({written.path});
      });
}

}  // namespace Nimbrel
