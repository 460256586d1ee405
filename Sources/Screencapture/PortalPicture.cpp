#include "Screencapture/PortalPicture.h"

#include "Platform/MetadataStore.h"
#include "Screencapture/PictureFile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageReader>
#include <QUrl>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

// Some file systems know the time of a file to two seconds only.
constexpr auto coarsestFileTime = 2s;

std::optional<QByteArray> contentOf(const fs::path& path) {
  std::error_code error;
  // Whatever else stands there might never come to an end.
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  const std::string content{std::istreambuf_iterator<char>(file), {}};
  return QByteArray::fromStdString(content);
}

std::optional<Error> copyPicture(const std::string& from, const CaptureRequest& request) {
  auto content = contentOf(from);
  if (!content) return Error{"The desktop portal's picture is not there"};
  QBuffer buffer(&*content);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const auto format = reader.format();
  auto picture = reader.read();
  if (picture.isNull()) return Error{"The desktop portal's picture cannot be read"};
  if (format == "png") return adoptPicture(*content, request.subject, request.path);
  if (picture.colorSpace().isValid()) picture.convertToColorSpace(QColorSpace::SRgb);
  return writePicture(picture, request.subject, request.path);
}

/// The folder that a variable of the environment names, or a usual one; without links. Empty when there is none.
fs::path folderOf(const char* variable, const fs::path& usual) {
  const char* value = std::getenv(variable);
  std::error_code error;
  return fs::canonical(value != nullptr && *value != '\0' ? fs::path(value) : usual, error);
}

bool liesIn(const fs::path& file, const fs::path& folder) {
  if (folder.empty()) return false;
  return std::mismatch(folder.begin(), folder.end(), file.begin(), file.end()).first == folder.end();
}

/// Whether nobody keeps anything there; the home counts as kept, wherever it lies, but for its caches.
bool isPassing(const fs::path& file) {
  const auto home = folderOf("HOME", {});
  if (liesIn(file, folderOf("XDG_CACHE_HOME", home / ".cache"))) return true;
  return liesIn(file, folderOf("TMPDIR", "/tmp")) && !liesIn(file, home);
}

void leaveBehind(const std::string& path, fs::file_time_type asked) {
  std::error_code error;
  const auto file = fs::canonical(path, error);
  if (error || fs::last_write_time(file, error) < asked - coarsestFileTime || error) return;
  if (isPassing(file)) {
    fs::remove(file, error);
  } else {
    static_cast<void>(MetadataStore::markNoScreenCapture(file.string()));
  }
}

}  // namespace

Result<std::string> localPath(const QString& address) {
  const QUrl url(address, QUrl::StrictMode);
  const auto host = url.host();
  const bool isHere = host.isEmpty() || host == QLatin1String("localhost");
  // Names of files are bytes, which need not be text.
  const auto path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8());
  if (!url.isValid() || url.scheme() != QLatin1String("file") || !isHere || !path.startsWith('/') ||
      path.contains('\0')) {
    return Error{"The desktop portal's picture is not on this machine"};
  }
  return path.toStdString();
}

std::optional<Error> takePortalPicture(const QString& address, fs::file_time_type asked,
                                       const CaptureRequest& request) {
  const auto path = localPath(address);
  if (!path) return path.error();
  if (auto error = copyPicture(path.value(), request)) return error;
  leaveBehind(path.value(), asked);
  return std::nullopt;
}

}  // namespace Nimbrel::Screencapture
