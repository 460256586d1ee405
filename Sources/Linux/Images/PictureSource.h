#pragma once

#include "Platform/ImageFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>

namespace Nimbrel::Images {

struct CloseStream {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

using PictureStream = std::unique_ptr<std::FILE, CloseStream>;

/// The kinds that are read. What has no signature is not among them, so that no chance bytes pass for a picture.
enum class PictureKind { None, Png, Jpeg, Heif, Gif, Tiff, WebP };

/// Opens a regular file; null for a folder, a pipe, or what cannot be read. Never waits for a writer.
[[nodiscard]] PictureStream openPicture(const std::string& path);

/// Reads up to the size of `bytes` at `offset` without moving the stream; returns how many there were.
[[nodiscard]] std::size_t readAt(std::FILE* file, std::int64_t offset, std::span<std::uint8_t> bytes);

/// The kind that the first bytes tell.
[[nodiscard]] PictureKind pictureKind(std::FILE* file);

/// No picture is held in memory as a whole when its pixels, at four bytes each, would take more than this.
inline constexpr std::int64_t wholePictureLimit = 256LL * 1024 * 1024;

[[nodiscard]] bool fitsInMemory(ImageFile::PixelSize size);

}  // namespace Nimbrel::Images
