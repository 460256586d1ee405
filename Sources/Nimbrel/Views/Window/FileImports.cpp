#include "Views/Window/FileImports.h"

#include "Foundation/Background.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"

#include <QImage>
#include <QThreadPool>
#include <QUrl>

#include <algorithm>
#include <string>
#include <vector>

namespace Nimbrel {

namespace {

using Paths = std::vector<std::string>;

Paths localFiles(const QMimeData& data) {
  Paths paths;
  for (const auto& url : data.urls()) {
    if (!url.isLocalFile()) continue;
    // A name is bytes; what of it is no UTF-8 stands percent-encoded in the address.
    const auto encoded = url.path(QUrl::FullyEncoded).toLatin1();
    auto path = QByteArray::fromPercentEncoding(encoded).toStdString();
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    if (!path.empty() && path.find('\0') == std::string::npos) paths.push_back(std::move(path));
  }
  return paths;
}

/// With each folder replaced by the images below it. Any thread.
Paths withoutFolders(const Paths& paths) {
  Paths files;
  for (const auto& path : paths) {
    if (!FileSystem::isOtherThanFile(path)) {
      files.push_back(path);
      continue;
    }
    FileSystem::forEachFileBelow(path, [&files](const std::string& file) {
      if (ShotFile::hasImageType(file)) files.push_back(file);
    });
  }
  return files;
}

}  // namespace

FileImports::FileImports(Store& store, QObject* parent) : QObject(parent), store_(store) {}

bool FileImports::canTake(const QMimeData& data) {
  if (data.hasImage()) return true;
  const auto urls = data.urls();
  return std::ranges::any_of(urls, &QUrl::isLocalFile);
}

void FileImports::take(const QMimeData& data) {
  const auto paths = localFiles(data);
  if (paths.empty()) {
    const auto picture = qvariant_cast<QImage>(data.imageData());
    if (!picture.isNull()) store_.importPicture(picture);
    return;
  }
  inBackground(
      this, *QThreadPool::globalInstance(), [paths] { return withoutFolders(paths); },
      [this](const Paths& files) { store_.importFiles(files); });
}

}  // namespace Nimbrel
