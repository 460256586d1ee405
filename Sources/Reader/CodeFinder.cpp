#include "Reader/CodeFinder.h"

#include "Reader/CodeClusters.h"

#include <ReadBarcode.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

namespace Nimbrel::Reader {

namespace {

using Format = ZXing::BarcodeFormat;
using Formats = ZXing::BarcodeFormats;

const Formats linear = Formats(Format::Code128) | Format::Code39 | Format::EAN8 | Format::EAN13 | Format::UPCA |
                       Format::UPCE | Format::ITF | Format::Codabar;
/// Found wherever they stand. Of the others, one is found if it stands in the middle of what is searched.
const Formats foundAnywhere = linear | Format::QRCode | Format::MicroQRCode | Format::PDF417;
const Formats inClusters =
    Formats(Format::QRCode) | Format::MicroQRCode | Format::Aztec | Format::DataMatrix | Format::PDF417;

/// What is read around a cluster beside it.
constexpr int margin = 10;
/// Clusters of a smaller side are read at twice their size too, of a larger one at half of it.
constexpr int smallSide = 160;
constexpr int largeSide = 120;

enum class Shades { AsTheyAre, Inverted };

bool isControl(unsigned char byte) {
  // Of the separators in codes for machines, text keeps those of groups and records.
  const bool isSeparator = byte >= 0x1C && byte <= 0x1F;
  return (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r' && !isSeparator) || byte == 0x7F;
}

/// Bytes that are no text are none, not a guess at their characters.
std::string payloadOf(const ZXing::Result& result) {
  const auto type = result.contentType();
  if (type == ZXing::ContentType::Binary || type == ZXing::ContentType::UnknownECI) return {};
  auto text = result.text();
  return std::ranges::any_of(text, isControl) ? std::string() : text;
}

QRect boundsOf(const ZXing::Position& corners) {
  const auto [left, right] = std::ranges::minmax({corners[0].x, corners[1].x, corners[2].x, corners[3].x});
  const auto [top, bottom] = std::ranges::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
  return {QPoint(left, top), QPoint(right, bottom)};
}

/// The codes of one polarity. The library's own search at smaller scales is left out: over a linear code that it sees
/// at two of them, an assertion of its own ends the process.
std::vector<FoundCode> read(const QImage& grey, Formats formats) {
  ZXing::DecodeHints hints;
  hints.setFormats(formats).setTryHarder(true).setTryRotate(true).setTryDownscale(false);
  const ZXing::ImageView view(grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum,
                              static_cast<int>(grey.bytesPerLine()));
  std::vector<FoundCode> codes;
  for (const auto& result : ZXing::ReadBarcodes(view, hints)) {
    if (result.isValid()) codes.push_back({payloadOf(result), boundsOf(result.position())});
  }
  return codes;
}

QImage inverted(QImage grey) {
  grey.invertPixels();
  return grey;
}

bool isKnown(const std::vector<FoundCode>& codes, const QRect& place) {
  return std::ranges::any_of(
      codes, [&](const auto& code) { return code.box.contains(place.center()) || place.contains(code.box.center()); });
}

/// Adds those that are not known yet; of what was found at once, one does not stand for another.
void add(std::vector<FoundCode> found, std::vector<FoundCode>& codes) {
  std::erase_if(found, [&](const FoundCode& code) { return isKnown(codes, code.box); });
  std::ranges::move(found, std::back_inserter(codes));
}

/// In both polarities.
std::vector<FoundCode> readBoth(const QImage& grey, Formats formats) {
  auto codes = read(grey, formats);
  add(read(inverted(grey), formats), codes);
  return codes;
}

/// The sizes at which a cluster is read until a code is found, as factors.
std::vector<double> scalesFor(QSize size) {
  const int side = std::max(size.width(), size.height());
  std::vector<double> scales{1};
  if (side < smallSide) scales.push_back(2);
  if (side > largeSide) scales.push_back(.5);
  return scales;
}

std::vector<FoundCode> readCluster(const QImage& grey, const QRect& cluster) {
  const auto area = cluster.adjusted(-margin, -margin, margin, margin).intersected(grey.rect());
  const auto piece = grey.copy(area);
  for (const double scale : scalesFor(area.size())) {
    const auto scaled =
        scale == 1 ? piece : piece.scaled(area.size() * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    auto codes = readBoth(scaled.convertToFormat(QImage::Format_Grayscale8), inClusters);
    for (auto& code : codes) {
      code.box = QRect(code.box.topLeft() / scale + area.topLeft(), code.box.size() / scale);
    }
    if (!codes.empty()) return codes;
  }
  return {};
}

}  // namespace

std::vector<FoundCode> findCodes(const QImage& picture) {
  const auto grey = picture.convertToFormat(QImage::Format_Grayscale8);
  if (grey.isNull()) return {};
  auto codes = readBoth(grey, foundAnywhere);
  // Together no larger than the picture, so that a picture full of what looks like codes takes twice as long, not more.
  auto budget = std::int64_t{grey.width()} * grey.height();
  for (const auto& cluster : codeClusters(grey)) {
    if (isKnown(codes, cluster)) continue;
    budget -= std::int64_t{cluster.width()} * cluster.height();
    if (budget < 0) break;
    add(readCluster(grey, cluster), codes);
  }
  return codes;
}

}  // namespace Nimbrel::Reader
