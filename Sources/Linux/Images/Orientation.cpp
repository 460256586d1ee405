#include "Linux/Images/Orientation.h"

#include <QTransform>

#include <libexif/exif-data.h>

#include <array>
#include <memory>
#include <vector>

namespace Nimbrel::Images {

int exifOrientation(std::span<const std::uint8_t> exif) {
  // The library wants the data as they stand in a JPEG.
  constexpr std::array<std::uint8_t, 6> prefix{'E', 'x', 'i', 'f', 0, 0};
  std::vector<std::uint8_t> bytes(prefix.begin(), prefix.end());
  bytes.insert(bytes.end(), exif.begin(), exif.end());

  const std::unique_ptr<ExifData, decltype(&exif_data_unref)> data(exif_data_new(), &exif_data_unref);
  if (!data) return 1;
  exif_data_unset_option(data.get(), EXIF_DATA_OPTION_FOLLOW_SPECIFICATION);
  exif_data_load_data(data.get(), bytes.data(), static_cast<unsigned>(bytes.size()));
  const auto* entry = exif_content_get_entry(data->ifd[EXIF_IFD_0], EXIF_TAG_ORIENTATION);
  if (!entry || entry->format != EXIF_FORMAT_SHORT || entry->size < 2) return 1;
  const int orientation = exif_get_short(entry->data, exif_data_get_byte_order(data.get()));
  return orientation >= 1 && orientation <= 8 ? orientation : 1;
}

QImage upright(const QImage& image, int orientation) {
  const auto turned = [&](double degrees) { return image.transformed(QTransform().rotate(degrees)); };
  switch (orientation) {
    case 2:
      return image.mirrored(true, false);
    case 3:
      return image.mirrored(true, true);
    case 4:
      return image.mirrored(false, true);
    case 5:
      return turned(90).mirrored(true, false);
    case 6:
      return turned(90);
    case 7:
      return turned(270).mirrored(true, false);
    case 8:
      return turned(270);
    default:
      return image;
  }
}

}  // namespace Nimbrel::Images
