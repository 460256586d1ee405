#include "Samples/SampleFile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

const QString markKey = u"Software"_s;
const QString mark = u"nimbrel-sample"_s;

Error errorAt(const QString& path, const QString& reason) {
  return {"cannot write " + path.toStdString() + ": " + reason.toStdString()};
}

QByteArray encoded(const QImage& picture) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, "png");
  writer.setText(markKey, mark);
  return writer.write(picture) ? bytes : QByteArray();
}

void setAttribute(const QByteArray& path, const char* name, const QByteArray& value) {
  // A file system without attributes leaves the name to say what the picture is.
  static_cast<void>(::setxattr(path.constData(), name, value.constData(), static_cast<std::size_t>(value.size()), 0));
}

bool setDates(const QByteArray& path, const QDateTime& moment) {
  const std::array<timespec, 2> dates{timespec{moment.toSecsSinceEpoch(), 0}, timespec{moment.toSecsSinceEpoch(), 0}};
  return ::utimensat(AT_FDCWD, path.constData(), dates.data(), 0) == 0;
}

}  // namespace

bool isSamplePicture(const QString& path) {
  // Bytes and no image reader, which would have a word to say about each damaged file on its own.
  constexpr qint64 enoughForTheHead = 1024;
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return false;
  const auto head = file.read(enoughForTheHead);
  return head.startsWith("\x89PNG") && head.contains("tEXt" + markKey.toLatin1() + '\0' + mark.toLatin1());
}

std::optional<Error> writePicture(const QString& path, const QImage& picture, const QDateTime& moment,
                                  QStringView captureType) {
  const auto bytes = encoded(picture);
  if (bytes.isEmpty()) return errorAt(path, u"the picture could not be encoded"_s);
  if (QFileInfo::exists(path) && !isSamplePicture(path)) return errorAt(path, u"a file that is no sample is there"_s);
  if (auto error = writeFile(path, bytes)) return error;
  const auto name = QFile::encodeName(path);
  if (!captureType.isEmpty()) {
    setAttribute(name, "user.kMDItemIsScreenCapture", "1");
    setAttribute(name, "user.kMDItemScreenCaptureType", captureType.toUtf8());
  }
  if (!setDates(name, moment)) return errorAt(path, QString::fromLocal8Bit(std::strerror(errno)));
  return std::nullopt;
}

std::optional<Error> writeFile(const QString& path, const QByteArray& content) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
    return errorAt(path, file.errorString());
  }
  return std::nullopt;
}

std::optional<Error> makeFolder(const QString& path) {
  if (QDir().mkpath(path)) return std::nullopt;
  return Error{"cannot make the folder " + path.toStdString()};
}

}  // namespace Nimbrel::Samples
