#include "Linux/Images/PictureSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string_view>

namespace Nimbrel::Images {

using namespace std::string_view_literals;

PictureStream openPicture(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return nullptr;
  struct stat status {};
  if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    if (auto* stream = ::fdopen(descriptor, "rb")) return PictureStream(stream);
  }
  ::close(descriptor);
  return nullptr;
}

std::size_t readAt(std::FILE* file, std::int64_t offset, std::span<std::uint8_t> bytes) {
  std::size_t count = 0;
  while (count < bytes.size()) {
    const auto part = ::pread(::fileno(file), bytes.data() + count, bytes.size() - count,
                              static_cast<off_t>(offset + static_cast<std::int64_t>(count)));
    if (part <= 0) break;
    count += static_cast<std::size_t>(part);
  }
  return count;
}

PictureKind pictureKind(std::FILE* file) {
  std::array<std::uint8_t, 16> bytes{};
  const auto count = readAt(file, 0, bytes);
  const std::string_view start(reinterpret_cast<const char*>(bytes.data()), count);
  if (start.starts_with("\x89PNG\r\n\x1A\n"sv)) return PictureKind::Png;
  if (start.starts_with("\xFF\xD8\xFF"sv)) return PictureKind::Jpeg;
  if (start.starts_with("GIF87a"sv) || start.starts_with("GIF89a"sv)) return PictureKind::Gif;
  if (start.starts_with("II*\0"sv) || start.starts_with("MM\0*"sv)) return PictureKind::Tiff;
  if (start.starts_with("II+\0"sv) || start.starts_with("MM\0+"sv)) return PictureKind::Tiff;
  if (count < 12) return PictureKind::None;
  if (start.starts_with("RIFF"sv) && start.substr(8).starts_with("WEBP"sv)) return PictureKind::WebP;
  if (start.substr(4).starts_with("ftyp"sv)) return PictureKind::Heif;
  return PictureKind::None;
}

bool fitsInMemory(ImageFile::PixelSize size) { return std::int64_t{4} * size.width * size.height <= wholePictureLimit; }

}  // namespace Nimbrel::Images
