#include "Screencapture/PictureFile.h"

#include "Foundation/FilePath.h"
#include "Platform/FileMove.h"
#include "Platform/FileSystem.h"
#include "Platform/ImageFile.h"
#include "Platform/MetadataStore.h"
#include "Platform/NewFile.h"

#include <QUuid>

#include <filesystem>
#include <string_view>

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

Error failure(const Error& error) { return {"The picture cannot be written: " + error.message}; }

/// A hidden name beside the wanted one: whoever watches the folder is to see the file with its marks.
std::string hiddenNeighbour(const std::string& path) {
  const auto name = ".nimbrel-" + QUuid::createUuid().toString(QUuid::Id128).toStdString();
  return FilePath::join(FilePath::folder(path), name);
}

/// `write` makes the file at the path that it is given.
template <class Write>
std::optional<Error> writeMarked(Write write, CaptureRequest::Subject subject, const std::string& path) {
  const auto target = std::filesystem::absolute(path).string();
  if (FileSystem::isTaken(target)) return failure({"Something stands at its path"});
  const auto hidden = hiddenNeighbour(target);
  if (const std::optional<Error> error = write(hidden)) return failure(*error);
  // Where files keep no such notes, the name alone tells.
  static_cast<void>(MetadataStore::markScreenCapture(hidden, captureType(subject)));
  const auto error = FileMove::move(hidden, target);
  if (!error) return std::nullopt;
  NewFile::discard(hidden);
  return failure(*error);
}

}  // namespace

std::optional<Error> writePicture(const QImage& picture, CaptureRequest::Subject subject, const std::string& path) {
  return writeMarked([&](const auto& hidden) { return ImageFile::writePNG(picture, hidden); }, subject, path);
}

std::optional<Error> adoptPicture(const QByteArray& png, CaptureRequest::Subject subject, const std::string& path) {
  const std::string_view bytes(png.constData(), static_cast<std::size_t>(png.size()));
  return writeMarked([&](const auto& hidden) { return NewFile::write(hidden, bytes); }, subject, path);
}

}  // namespace Nimbrel::Screencapture
