#pragma once

#include <QByteArray>
#include <QImage>

#include <jpeglib.h>
#include <png.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Picture files with properties that QImage cannot write.
namespace Nimbrel::Testing {

/// EXIF data, from their byte order mark on, that name an orientation and nothing else.
[[nodiscard]] QByteArray exifWithOrientation(int orientation);

struct PngSpec {
  int width = 1;
  int height = 1;
  int bitDepth = 8;
  int colourType = PNG_COLOR_TYPE_RGB;
  bool interlaced = false;
  std::vector<png_color> palette{};
  std::vector<png_byte> paletteAlpha{};
  std::optional<png_color_16> transparent{};
  QByteArray profile{};
  QByteArray exif{};
  QByteArray exifAtEnd{};
};

/// Writes the rows that `fillRow` makes, each as it stands in the file: samples of more than a byte highest byte first.
void writePng(const std::string& path, const PngSpec& spec,
              const std::function<void(int y, std::vector<png_byte>& row)>& fillRow);

/// The samples of an opaque picture, for rows of eight bits.
[[nodiscard]] std::function<void(int, std::vector<png_byte>&)> rowsOf(const QImage& image);

struct JpegSpec {
  J_COLOR_SPACE colours = JCS_YCbCr;
  bool progressive = false;
  QByteArray profile{};
  QByteArray exif{};
  int paddingSegments = 0;
};

/// Writes a picture at high quality and full resolution of the colours. What is CMYK or YCCK carries an even amount of
/// black, so the picture must not be brighter than that lets through: 200 of 255.
void writeJpeg(const std::string& path, const QImage& image, const JpegSpec& spec = {});

void writeHeic(const std::string& path, const QImage& image, int orientation = 1, const QByteArray& profile = {});

/// A TIFF without compression, its pixels at the end.
[[nodiscard]] std::string tiff(const QImage& image, int orientation = 1);

/// A GIF of the size with a table of 128 colours; `frames` are indices into it, row by row.
[[nodiscard]] std::string gif(int width, int height, const std::vector<QRgb>& colours,
                              const std::vector<std::vector<std::uint8_t>>& frames);

}  // namespace Nimbrel::Testing
