#include "Model/ShotFile.h"

#include "Foundation/FilePath.h"
#include "Foundation/Text.h"
#include "Platform/FileSystem.h"
#include "Platform/MetadataStore.h"

#include <algorithm>
#include <array>

namespace Nimbrel::ShotFile {

namespace {

constexpr std::array<std::string_view, 7> types{"png", "jpg", "jpeg", "heic", "tiff", "gif", "webp"};
constexpr int lastNumberTried = 999;

}  // namespace

std::span<const std::string_view> imageTypes() { return types; }

bool hasImageType(std::string_view path) {
  return std::ranges::find(types, Text::asciiLowered(FilePath::extension(path))) != types.end();
}

std::string uniqueURL(const std::string& path) {
  if (!FileSystem::isTaken(path)) return path;
  const auto folder = FilePath::folder(path);
  const auto name = FilePath::lastComponent(path);
  for (int number = 2; number <= lastNumberTried; ++number) {
    auto candidate = FilePath::join(folder, FilePath::numberedName(name, number));
    if (!FileSystem::isTaken(candidate)) return candidate;
  }
  return path;
}

Timestamp created(const std::string& path, Timestamp now) { return FileSystem::creationDate(path).value_or(now); }

ImageFile::PixelSize dimensions(const std::string& path) { return ImageFile::pixelSize(path); }

std::int64_t size(const std::string& path) { return FileSystem::size(path).value_or(0); }

std::string captureType(const std::string& path) {
  return MetadataStore::screenCaptureType(path).value_or(std::string());
}

QImage thumbnail(const std::string& path, int maxPixel) {
  const std::array sizes{maxPixel};
  auto images = ImageFile::thumbnails(path, sizes);
  return images.empty() ? QImage() : std::move(images.front());
}

}  // namespace Nimbrel::ShotFile
