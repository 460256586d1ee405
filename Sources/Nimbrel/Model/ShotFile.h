#pragma once

#include "Foundation/Timestamp.h"
#include "Platform/ImageFile.h"

#include <QImage>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Facts of one file on disk. Any thread, no state; nothing fails: what cannot be read gives the fallback that each
/// function names, and the shot is catalogued all the same.
namespace Nimbrel::ShotFile {

/// The seven lower-case extensions that count as images anywhere in the program.
[[nodiscard]] std::span<const std::string_view> imageTypes();

/// Whether the name's extension, lower-cased, is one of them.
[[nodiscard]] bool hasImageType(std::string_view path);

/// The wanted path if nothing stands there, else the first free one of "name 2.ext" to "name 999.ext" beside it. When
/// all are taken the wanted path comes back, and whoever moves a file there fails rather than overwrites.
[[nodiscard]] std::string uniqueURL(const std::string& path);

/// When the file was made; `now` when that cannot be read.
[[nodiscard]] Timestamp created(const std::string& path, Timestamp now);

/// Width and height in pixels as stored; 0 for what cannot be read.
[[nodiscard]] ImageFile::PixelSize dimensions(const std::string& path);

/// Bytes; 0 when it cannot be read.
[[nodiscard]] std::int64_t size(const std::string& path);

/// What whoever took the screenshot called its kind; empty when nothing was said.
[[nodiscard]] std::string captureType(const std::string& path);

/// The first image of the file with its orientation applied, scaled down to at most `maxPixel` pixels on its longer
/// side; null when the file cannot be read.
[[nodiscard]] QImage thumbnail(const std::string& path, int maxPixel);

}  // namespace Nimbrel::ShotFile
