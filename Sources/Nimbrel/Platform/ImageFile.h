#pragma once

#include "Foundation/Result.h"

#include <QImage>

#include <optional>
#include <span>
#include <string>
#include <vector>

/// Pictures on disk. The kind of a picture is told by its content, never by its name. Any thread, no state; a file that
/// is read and cannot be, is cut short or is no picture gives the fallback and nothing else.
namespace Nimbrel::ImageFile {

struct PixelSize {
  int width = 0;
  int height = 0;

  bool operator==(const PixelSize&) const = default;
};

/// The size in pixels as stored, before any orientation is applied, read from the header alone. What is not known is 0.
[[nodiscard]] PixelSize pixelSize(const std::string& path);

/// The first image of the file at several sizes from one decode. `longerSides` are the largest allowed lengths of the
/// longer side in pixels, in descending order; the result has one image for each, in that order. A picture is never
/// enlarged; its orientation is applied, its colours are sRGB. It is Format_RGB32 or, where something of it is
/// transparent, Format_ARGB32_Premultiplied. Reduction averages the area under each pixel; each size is made from the
/// one before it. Rows are reduced as they are decoded, so that memory does not grow with the size of a PNG or JPEG,
/// unless that is stored in several passes. Empty on failure, for a length below 1, and for a picture that would have
/// to be held as a whole and takes more than 256 MB.
[[nodiscard]] std::vector<QImage> thumbnails(const std::string& path, std::span<const int> longerSides);

/// The first image of the file at its full size, in the same form. Null on failure and for a picture whose pixels take
/// more than 256 MB at four bytes each.
[[nodiscard]] QImage picture(const std::string& path);

/// Writes a picture as PNG to a path where nothing stands, in a folder that is there; absent when it is on the disk.
/// The file holds the pixels, taken for sRGB, and nothing else, whatever else the image knows; alpha is kept where
/// something is transparent. It is whole or not there, as NewFile promises; errors are in words for people, and name no
/// file.
[[nodiscard]] std::optional<Error> writePNG(const QImage& picture, const std::string& path);

}  // namespace Nimbrel::ImageFile
