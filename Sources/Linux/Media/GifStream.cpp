#include "Linux/Media/GifStream.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace Nimbrel::Media {

namespace {

struct FreeingColours {
  void operator()(ColorMapObject* colours) const { GifFreeMapObject(colours); }
};
using ColourTable = std::unique_ptr<ColorMapObject, FreeingColours>;

/// The colours and the transparent one behind them, in a table whose length is a power of two, as the format wants.
ColourTable tableOf(const GifPalette& palette) {
  std::array<GifColorType, 256> colours{};
  std::ranges::transform(palette.colours(), colours.begin(), [](QRgb colour) {
    const auto channel = [](int value) { return static_cast<GifByteType>(value); };
    return GifColorType{channel(qRed(colour)), channel(qGreen(colour)), channel(qBlue(colour))};
  });
  const int bits = std::max(1, GifBitSize(palette.transparent() + 1));
  return ColourTable(GifMakeMapObject(1 << bits, colours.data()));
}

int writeTo(GifFileType* gif, const GifByteType* bytes, int count) {
  auto* file = static_cast<std::FILE*>(gif->UserData);
  return static_cast<int>(std::fwrite(bytes, 1, static_cast<std::size_t>(count), file));
}

/// Sets the disposal to "do not dispose".
std::array<GifByteType, 4> controlOf(int delay, int transparent) {
  const GraphicsControlBlock control{
      .DisposalMode = DISPOSE_DO_NOT, .UserInputFlag = false, .DelayTime = delay, .TransparentColor = transparent};
  std::array<GifByteType, 4> bytes{};
  EGifGCBToExtension(&control, bytes.data());
  return bytes;
}

bool putLoop(GifFileType* gif) {
  constexpr std::array<GifByteType, 3> forEver{1, 0, 0};
  return EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE) == GIF_OK &&
         EGifPutExtensionBlock(gif, 11, "NETSCAPE2.0") == GIF_OK &&
         EGifPutExtensionBlock(gif, forEver.size(), forEver.data()) == GIF_OK && EGifPutExtensionTrailer(gif) == GIF_OK;
}

/// Begins an image. Where that has no table of its own, the library would forget the former one without freeing it.
bool putPlace(GifFileType* gif, const QRect& place, const ColorMapObject* table) {
  GifFreeMapObject(std::exchange(gif->Image.ColorMap, nullptr));
  return EGifPutImageDesc(gif, place.x(), place.y(), place.width(), place.height(), false, table) == GIF_OK;
}

}  // namespace

std::unique_ptr<GifStream> GifStream::open(const std::string& path) {
  auto* file = std::fopen(path.c_str(), "r+be");
  if (!file) return nullptr;
  std::unique_ptr<GifStream> stream(new GifStream(file));
  return stream->gif_ ? std::move(stream) : nullptr;
}

GifStream::GifStream(std::FILE* file) : file_(file), gif_(EGifOpen(file, writeTo, nullptr)) {
  if (gif_) EGifSetGifVersion(gif_, true);
}

GifStream::~GifStream() {
  if (gif_) EGifCloseFile(gif_, nullptr);
}

bool GifStream::begin(QSize size, const GifPalette& palette) {
  constexpr int bitsOfChannel = 8;
  transparent_ = palette.transparent();
  const auto table = tableOf(palette);
  return table && EGifPutScreenDesc(gif_, size.width(), size.height(), bitsOfChannel, 0, table.get()) == GIF_OK &&
         putLoop(gif_);
}

bool GifStream::put(const GifImage& image, int delay) {
  if (image.place.isEmpty()) return putNothing(delay);
  const auto& palette = *image.palette.palette;
  const bool isOwn = image.palette.use == PaletteUse::OfImage;
  const auto table = isOwn ? tableOf(palette) : nullptr;
  return (table || !isOwn) && putDelay(delay, palette.transparent()) && putPlace(gif_, image.place, table.get()) &&
         putPixels(image);
}

bool GifStream::putPixels(const GifImage& image) {
  auto* row = image.indices;
  for (int y = 0; y < image.place.height(); ++y, row += image.stride) {
    if (EGifPutLine(gif_, row, image.place.width()) != GIF_OK) return false;
  }
  return std::ferror(file_.get()) == 0;
}

/// An image cannot be empty, so that it has one pixel that changes nothing.
bool GifStream::putNothing(int delay) {
  return putDelay(delay, transparent_) && putPlace(gif_, QRect(0, 0, 1, 1), nullptr) &&
         EGifPutPixel(gif_, static_cast<GifPixelType>(transparent_)) == GIF_OK && std::ferror(file_.get()) == 0;
}

bool GifStream::putDelay(int delay, int transparent) {
  const auto control = controlOf(delay, transparent);
  if (EGifPutExtension(gif_, GRAPHICS_EXT_FUNC_CODE, control.size(), control.data()) != GIF_OK) return false;
  constexpr long behindDelay = 4;  // two bytes of delay, the transparent index, the end of the block
  delayPlace_ = std::ftell(file_.get()) - behindDelay;
  return delayPlace_ > 0;
}

bool GifStream::setLastDelay(int delay) {
  const std::array<std::uint8_t, 2> bytes{static_cast<std::uint8_t>(delay), static_cast<std::uint8_t>(delay >> 8)};
  return std::fseek(file_.get(), delayPlace_, SEEK_SET) == 0 &&
         std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) == bytes.size() &&
         std::fseek(file_.get(), 0, SEEK_END) == 0;
}

bool GifStream::finish() {
  auto* gif = std::exchange(gif_, nullptr);
  if (EGifCloseFile(gif, nullptr) != GIF_OK || std::ferror(file_.get()) != 0) return false;
  return std::fclose(file_.release()) == 0;
}

}  // namespace Nimbrel::Media
