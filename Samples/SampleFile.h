#pragma once

#include "Foundation/Result.h"

#include <QDateTime>
#include <QImage>
#include <QString>

#include <optional>

/// One file of the sample home. Paths are absolute. What fails answers why; a file that could not be written is as it
/// was.
namespace Nimbrel::Samples {

/// Whether the file is a picture that writePicture() made, or a copy of one, whatever its name and place.
[[nodiscard]] bool isSamplePicture(const QString& path);

/// Writes a PNG. `captureType` is left with the file for who reads screen-capture metadata, unless it is empty or the
/// file system keeps no attributes. The file's dates are those of the moment.
[[nodiscard]] std::optional<Error> writePicture(const QString& path, const QImage& picture, const QDateTime& moment,
                                                QStringView captureType);

/// Writes bytes in place of what the file had.
[[nodiscard]] std::optional<Error> writeFile(const QString& path, const QByteArray& content);

/// Makes a folder with those on the way to it.
[[nodiscard]] std::optional<Error> makeFolder(const QString& path);

}  // namespace Nimbrel::Samples
