#include "Linux/Images/JpegDecoder.h"

#include "Linux/Images/AreaReducer.h"
#include "Linux/Images/Colours.h"
#include "Linux/Images/Orientation.h"
#include "Linux/Images/PictureSource.h"

#include <jpeglib.h>

#include <jerror.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace Nimbrel::Images {

using ImageFile::PixelSize;

namespace {

struct ErrorHandler : jpeg_error_mgr {
  std::jmp_buf back;
};

[[noreturn]] void giveUp(j_common_ptr info) { std::longjmp(static_cast<ErrorHandler*>(info->err)->back, 1); }

/// libjpeg goes on with grey where data are missing or make no sense; such a picture counts as unreadable.
void judgeWarning(j_common_ptr info, int level) {
  if (level >= 0) return;
  switch (info->err->msg_code) {
    case JWRN_JPEG_EOF:
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_ARITH_BAD_CODE:
    case JWRN_MUST_RESYNC:
      giveUp(info);
    default:
      break;
  }
}

/// A few bytes can ask for any number of passes over a large picture; no encoder makes nearly as many.
void limitScans(j_common_ptr info) {
  constexpr int scanLimit = 200;
  if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > scanLimit) giveUp(info);
}

/// The state of libjpeg, freed at the end. The library leaves its functions by a jump when a file is bad: each call of
/// it is therefore made inside `attempt`, in steps that hold nothing that would have to be destroyed.
class JpegReader {
 public:
  explicit JpegReader(std::FILE* file) {
    info_.err = jpeg_std_error(&errors_);
    errors_.error_exit = giveUp;
    errors_.emit_message = judgeWarning;
    progress_.progress_monitor = limitScans;
    valid_ = attempt([this, file] {
      jpeg_create_decompress(&info_);
      info_.progress = &progress_;
      info_.mem->max_memory_to_use = wholePictureLimit;
      jpeg_save_markers(&info_, exifMarker, 0xFFFF);
      jpeg_save_markers(&info_, profileMarker, 0xFFFF);
      jpeg_stdio_src(&info_, file);
    });
  }
  ~JpegReader() { jpeg_destroy_decompress(&info_); }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;

  [[nodiscard]] bool readHeader() {
    return valid_ && attempt([this] { jpeg_read_header(&info_, TRUE); });
  }

  [[nodiscard]] PixelSize size() const {
    return {.width = static_cast<int>(info_.image_width), .height = static_cast<int>(info_.image_height)};
  }

  /// Begins to decode at the smallest of the fast scales that is not smaller than the target.
  [[nodiscard]] bool start(PixelSize target) {
    return attempt([this, target] {
      info_.out_color_space = outputColours();
      info_.scale_denom = 8;
      for (const unsigned scale : {1U, 2U, 4U, 8U}) {
        info_.scale_num = scale;
        jpeg_calc_output_dimensions(&info_);
        if (scaledSize().width >= target.width && scaledSize().height >= target.height) break;
      }
      jpeg_start_decompress(&info_);
    });
  }

  [[nodiscard]] PixelSize scaledSize() const {
    return {.width = static_cast<int>(info_.output_width), .height = static_cast<int>(info_.output_height)};
  }

  [[nodiscard]] bool isCmyk() const { return info_.out_color_space == JCS_CMYK; }
  [[nodiscard]] PixelLayout layout() const {
    return info_.output_components == 1 ? PixelLayout::Grey : PixelLayout::Rgb;
  }
  [[nodiscard]] std::size_t rowBytes() const {
    return std::size_t{info_.output_width} * static_cast<std::size_t>(info_.output_components);
  }

  [[nodiscard]] bool readRow(std::uint8_t* row) {
    return attempt([this, &row] { jpeg_read_scanlines(&info_, &row, 1); });
  }

  /// Reads to the end of the picture and lets go of what stood before it.
  [[nodiscard]] bool finish() {
    return attempt([this] { jpeg_finish_decompress(&info_); });
  }

  [[nodiscard]] QByteArray profile() {
    JOCTET* bytes = nullptr;
    unsigned size = 0;
    const bool found = attempt([&] {
      if (!jpeg_read_icc_profile(&info_, &bytes, &size)) size = 0;
    });
    QByteArray result;
    if (found && bytes) result = QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    std::free(bytes);
    return result;
  }

  [[nodiscard]] int orientation() const {
    using namespace std::string_view_literals;
    constexpr auto prefix = "Exif\0\0"sv;
    for (const auto* marker = info_.marker_list; marker; marker = marker->next) {
      const std::string_view data(reinterpret_cast<const char*>(marker->data), marker->data_length);
      if (marker->marker != exifMarker || !data.starts_with(prefix)) continue;
      return exifOrientation({marker->data + prefix.size(), marker->data_length - prefix.size()});
    }
    return 1;
  }

 private:
  static constexpr int exifMarker = JPEG_APP0 + 1;
  static constexpr int profileMarker = JPEG_APP0 + 2;

  [[nodiscard]] J_COLOR_SPACE outputColours() const {
    switch (info_.jpeg_color_space) {
      case JCS_GRAYSCALE:
        return JCS_GRAYSCALE;
      case JCS_CMYK:
      case JCS_YCCK:
        return JCS_CMYK;
      default:
        return JCS_RGB;
    }
  }

  template <typename Step>
  bool attempt(Step step) {
    if (setjmp(errors_.back) != 0) return false;
    step();
    return true;
  }

  jpeg_decompress_struct info_{};
  ErrorHandler errors_{};
  jpeg_progress_mgr progress_{};
  bool valid_ = false;
};

/// CMYK as every writer of such files stores it, inverted: light, not ink. The row becomes shorter in place.
void makeRgb(std::vector<std::uint8_t>& row) {
  for (std::size_t from = 0, to = 0; from + 3 < row.size(); from += 4, to += 3) {
    const int black = row[from + 3];
    for (std::size_t c = 0; c < 3; ++c) row[to + c] = static_cast<std::uint8_t>((row[from + c] * black + 127) / 255);
  }
}

bool reduceRows(JpegReader& jpeg, AreaReducer& reducer) {
  std::vector<std::uint8_t> row(jpeg.rowBytes());
  for (int y = 0; y < jpeg.scaledSize().height; ++y) {
    if (!jpeg.readRow(row.data())) return false;
    if (jpeg.isCmyk()) makeRgb(row);
    reducer.addRow(row.data());
  }
  return jpeg.finish();
}

}  // namespace

QImage decodeJpeg(std::FILE* file, int longerSide) {
  JpegReader jpeg(file);
  if (!jpeg.readHeader()) return {};
  const auto target = fittedSize(jpeg.size(), longerSide);
  if (!jpeg.start(target)) return {};
  // The profile of a CMYK picture is about inks, of which nothing will be left.
  const auto profile = jpeg.isCmyk() ? QByteArray() : jpeg.profile();
  const int orientation = jpeg.orientation();
  AreaReducer reducer(jpeg.scaledSize(), jpeg.layout(), target);
  if (!reducer.isValid() || !reduceRows(jpeg, reducer)) return {};
  return upright(inSrgb(reducer.takeImage(), profile), orientation);
}

}  // namespace Nimbrel::Images
