#include "PictureFiles.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <libheif/heif.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <memory>

namespace Nimbrel::Testing {

namespace {

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Stream create(const std::string& path) {
  Stream file(std::fopen(path.c_str(), "wb"), &std::fclose);
  EXPECT_TRUE(file) << path;
  return file;
}

const png_byte* bytesOf(const QByteArray& data) { return reinterpret_cast<const png_byte*>(data.constData()); }
unsigned sizeOf(const QByteArray& data) { return static_cast<unsigned>(data.size()); }

void setExif(png_structp png, png_infop info, QByteArray exif) {
  if (!exif.isEmpty()) png_set_eXIf_1(png, info, sizeOf(exif), reinterpret_cast<png_bytep>(exif.data()));
}

void setPngHeader(png_structp png, png_infop info, const PngSpec& spec) {
  png_set_IHDR(png, info, static_cast<unsigned>(spec.width), static_cast<unsigned>(spec.height), spec.bitDepth,
               spec.colourType, spec.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (!spec.palette.empty()) png_set_PLTE(png, info, spec.palette.data(), static_cast<int>(spec.palette.size()));
  if (!spec.paletteAlpha.empty()) {
    png_set_tRNS(png, info, spec.paletteAlpha.data(), static_cast<int>(spec.paletteAlpha.size()), nullptr);
  }
  if (spec.transparent) png_set_tRNS(png, info, nullptr, 0, &*spec.transparent);
  if (!spec.profile.isEmpty()) png_set_iCCP(png, info, "profile", 0, bytesOf(spec.profile), sizeOf(spec.profile));
  setExif(png, info, spec.exif);
}

std::size_t pngRowBytes(const PngSpec& spec) {
  int channels = 1;
  if ((spec.colourType & PNG_COLOR_MASK_PALETTE) == 0) {
    if ((spec.colourType & PNG_COLOR_MASK_COLOR) != 0) channels = 3;
    if ((spec.colourType & PNG_COLOR_MASK_ALPHA) != 0) ++channels;
  }
  return static_cast<std::size_t>((spec.width * channels * spec.bitDepth + 7) / 8);
}

void setJpegColours(jpeg_compress_struct& info, J_COLOR_SPACE colours) {
  const bool hasBlack = colours == JCS_CMYK || colours == JCS_YCCK;
  info.input_components = hasBlack ? 4 : 3;
  info.in_color_space = hasBlack ? JCS_CMYK : JCS_RGB;
  jpeg_set_defaults(&info);
  jpeg_set_colorspace(&info, colours);
  jpeg_set_quality(&info, 95, TRUE);
  for (int i = 0; i < info.num_components; ++i) info.comp_info[i].h_samp_factor = info.comp_info[i].v_samp_factor = 1;
}

std::vector<JSAMPLE> jpegRow(const QImage& image, int y, int channels) {
  constexpr int black = 200;
  std::vector<JSAMPLE> row;
  for (int x = 0; x < image.width(); ++x) {
    const QRgb pixel = image.pixel(x, y);
    for (const int value : {qRed(pixel), qGreen(pixel), qBlue(pixel)}) {
      row.push_back(static_cast<JSAMPLE>(channels == 4 ? std::min(255, value * 255 / black) : value));
    }
    if (channels == 4) row.push_back(black);
  }
  return row;
}

void appendNumber(std::string& bytes, int value) {
  bytes += static_cast<char>(value & 0xFF);
  bytes += static_cast<char>(value >> 8);
}

/// Codes of eight bits: the table is cleared before it would ask for nine, so that every pixel is a code of its own.
std::string gifCodes(const std::vector<std::uint8_t>& indices) {
  constexpr std::uint8_t clear = 0x80;
  constexpr std::uint8_t end = 0x81;
  constexpr std::size_t run = 100;
  std::string codes;
  for (std::size_t i = 0; i < indices.size(); ++i) {
    if (i % run == 0) codes += static_cast<char>(clear);
    codes += static_cast<char>(indices[i]);
  }
  return codes + static_cast<char>(end);
}

std::string gifFrame(int width, int height, const std::vector<std::uint8_t>& indices) {
  std::string bytes{',', 0, 0, 0, 0};
  appendNumber(bytes, width);
  appendNumber(bytes, height);
  bytes += '\0';
  bytes += '\x07';
  const auto codes = gifCodes(indices);
  for (std::size_t at = 0; at < codes.size(); at += 255) {
    const auto block = codes.substr(at, 255);
    bytes += static_cast<char>(block.size());
    bytes += block;
  }
  return bytes + '\0';
}

heif_image* heicPixels(const QImage& picture) {
  const bool alpha = picture.hasAlphaChannel();
  const auto source = picture.convertToFormat(alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  heif_image* image = nullptr;
  heif_image_create(source.width(), source.height(), heif_colorspace_RGB,
                    alpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, &image);
  heif_image_add_plane(image, heif_channel_interleaved, source.width(), source.height(), 8);
  int stride = 0;
  auto* row = heif_image_get_plane(image, heif_channel_interleaved, &stride);
  for (int y = 0; y < source.height(); ++y, row += stride) {
    std::copy_n(source.constScanLine(y), source.width() * (alpha ? 4 : 3), row);
  }
  return image;
}

/// The encoder of libheif 1.15 stores the size of the turned picture. What belongs there is the one before, as cameras
/// have it; it stands in the last box of the kind.
void storeSizeBeforeTurning(const std::string& path) {
  const auto bytes = contentOf(path);
  const auto box = bytes.rfind("ispe", bytes.find("mdat"));
  ASSERT_NE(box, std::string::npos);
  std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
  file.seekp(static_cast<std::streamoff>(box + 8));
  file << bytes.substr(box + 12, 4) << bytes.substr(box + 8, 4);
}

}  // namespace

QByteArray exifWithOrientation(int orientation) {
  QByteArray data("II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 18);
  data.append(static_cast<char>(orientation));
  return data.append(7, '\0');
}

void writePng(const std::string& path, const PngSpec& spec,
              const std::function<void(int, std::vector<png_byte>&)>& fillRow) {
  const auto file = create(path);
  auto* png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  auto* info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_set_compression_level(png, 1);
  setPngHeader(png, info, spec);
  png_write_info(png, info);
  const int passes = png_set_interlace_handling(png);
  std::vector<png_byte> row(pngRowBytes(spec));
  for (int pass = 0; pass < passes; ++pass) {
    for (int y = 0; y < spec.height; ++y) {
      fillRow(y, row);
      png_write_row(png, row.data());
    }
  }
  setExif(png, info, spec.exifAtEnd);
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
}

std::function<void(int, std::vector<png_byte>&)> rowsOf(const QImage& image) {
  return [source = image.convertToFormat(QImage::Format_RGB888)](int y, std::vector<png_byte>& row) {
    std::copy_n(source.constScanLine(y), row.size(), row.data());
  };
}

void writeJpeg(const std::string& path, const QImage& image, const JpegSpec& spec) {
  const auto file = create(path);
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  jpeg_stdio_dest(&info, file.get());
  info.image_width = static_cast<unsigned>(image.width());
  info.image_height = static_cast<unsigned>(image.height());
  setJpegColours(info, spec.colours);
  if (spec.progressive) jpeg_simple_progression(&info);
  jpeg_start_compress(&info, TRUE);
  const QByteArray padding(65000, 'x');
  for (int i = 0; i < spec.paddingSegments; ++i)
    jpeg_write_marker(&info, JPEG_APP0 + 5, bytesOf(padding), sizeOf(padding));
  if (!spec.exif.isEmpty()) {
    const auto segment = QByteArray("Exif\0\0", 6) + spec.exif;
    jpeg_write_marker(&info, JPEG_APP0 + 1, bytesOf(segment), sizeOf(segment));
  }
  if (!spec.profile.isEmpty()) jpeg_write_icc_profile(&info, bytesOf(spec.profile), sizeOf(spec.profile));
  for (int y = 0; y < image.height(); ++y) {
    auto row = jpegRow(image, y, info.input_components);
    std::array rows{row.data()};
    jpeg_write_scanlines(&info, rows.data(), 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
}

void writeHeic(const std::string& path, const QImage& image, int orientation, const QByteArray& profile) {
  auto* context = heif_context_alloc();
  heif_encoder* encoder = nullptr;
  EXPECT_EQ(heif_context_get_encoder_for_format(context, heif_compression_HEVC, &encoder).code, heif_error_Ok);
  heif_encoder_set_lossy_quality(encoder, 90);
  heif_encoder_set_parameter_string(encoder, "preset", "ultrafast");
  heif_encoder_set_parameter_string(encoder, "chroma", "444");
  auto* pixels = heicPixels(image);
  if (!profile.isEmpty()) {
    heif_image_set_raw_color_profile(pixels, "prof", profile.constData(), static_cast<std::size_t>(profile.size()));
  }
  auto* options = heif_encoding_options_alloc();
  options->image_orientation = static_cast<heif_orientation>(orientation);
  EXPECT_EQ(heif_context_encode_image(context, pixels, encoder, options, nullptr).code, heif_error_Ok);
  EXPECT_EQ(heif_context_write_to_file(context, path.c_str()).code, heif_error_Ok);
  heif_encoding_options_free(options);
  heif_image_release(pixels);
  heif_encoder_release(encoder);
  heif_context_free(context);
  if (orientation >= 5) storeSizeBeforeTurning(path);
}

std::string tiff(const QImage& image, int orientation) {
  constexpr int entries = 10;
  constexpr int bitsAt = 8 + 2 + 12 * entries + 4;
  constexpr int pixelsAt = bitsAt + 6;
  std::string bytes("II*\0\x08\0\0\0", 8);
  const auto addEntry = [&](int tag, int type, int count, int value) {
    for (const int part : {tag, type, count, count >> 16, value, value >> 16}) appendNumber(bytes, part & 0xFFFF);
  };
  constexpr int shorts = 3;
  constexpr int longs = 4;
  appendNumber(bytes, entries);
  addEntry(256, longs, 1, image.width());
  addEntry(257, longs, 1, image.height());
  addEntry(258, shorts, 3, bitsAt);
  addEntry(259, shorts, 1, 1);  // not compressed
  addEntry(262, shorts, 1, 2);  // red, green, blue
  addEntry(273, longs, 1, pixelsAt);
  addEntry(274, shorts, 1, orientation);
  addEntry(277, shorts, 1, 3);
  addEntry(278, longs, 1, image.height());
  addEntry(279, longs, 1, image.width() * image.height() * 3);
  for (const int part : {0, 0, 8, 8, 8}) appendNumber(bytes, part);
  const auto source = image.convertToFormat(QImage::Format_RGB888);
  for (int y = 0; y < source.height(); ++y) {
    bytes.append(reinterpret_cast<const char*>(source.constScanLine(y)), static_cast<std::size_t>(source.width() * 3));
  }
  return bytes;
}

std::string gif(int width, int height, const std::vector<QRgb>& colours,
                const std::vector<std::vector<std::uint8_t>>& frames) {
  std::string bytes = "GIF89a";
  appendNumber(bytes, width);
  appendNumber(bytes, height);
  bytes += std::string("\xF6\0\0", 3);
  for (std::size_t i = 0; i < 128; ++i) {
    const QRgb colour = i < colours.size() ? colours[i] : 0;
    for (const int value : {qRed(colour), qGreen(colour), qBlue(colour)}) bytes += static_cast<char>(value);
  }
  for (const auto& indices : frames) bytes += gifFrame(width, height, indices);
  return bytes + ';';
}

}  // namespace Nimbrel::Testing
