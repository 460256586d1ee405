#include "Support/GifReading.h"

#include <gif_lib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <span>

namespace Nimbrel::Testing {

namespace {

struct Closing {
  void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};

bool isEndlessLoop(std::span<const ExtensionBlock> blocks) {
  for (std::size_t i = 0; i + 1 < blocks.size(); ++i) {
    if (blocks[i].Function != APPLICATION_EXT_FUNC_CODE || blocks[i].ByteCount != 11) continue;
    const auto* loop = blocks[i + 1].Bytes;
    const bool endless = blocks[i + 1].ByteCount == 3 && loop[0] == 1 && loop[1] == 0 && loop[2] == 0;
    if (std::memcmp(blocks[i].Bytes, "NETSCAPE2.0", 11) == 0 && endless) return true;
  }
  return false;
}

/// Lays the image over what is shown already.
void lay(const SavedImage& image, const ColorMapObject& colours, int transparent, QImage& screen) {
  const auto& place = image.ImageDesc;
  for (int y = 0; y < place.Height; ++y) {
    for (int x = 0; x < place.Width; ++x) {
      const int index = image.RasterBits[y * place.Width + x];
      if (index == transparent) continue;
      ASSERT_LT(index, colours.ColorCount);
      const auto& colour = colours.Colors[index];
      screen.setPixel(place.Left + x, place.Top + y, qRgb(colour.Red, colour.Green, colour.Blue));
    }
  }
}

}  // namespace

std::vector<int> StoredGif::delays() const {
  std::vector<int> result;
  std::ranges::transform(images, std::back_inserter(result), &StoredGifImage::delay);
  return result;
}

StoredGif readGif(const std::string& path) {
  int error = 0;
  const std::unique_ptr<GifFileType, Closing> gif(DGifOpenFileName(path.c_str(), &error));
  if (!gif || DGifSlurp(gif.get()) != GIF_OK) {
    ADD_FAILURE() << "cannot read " << path << ": " << error;
    return {};
  }
  StoredGif result{.size = QSize(gif->SWidth, gif->SHeight), .colours = gif->SColorMap->ColorCount};
  QImage screen(result.size, QImage::Format_RGB32);
  screen.fill(Qt::magenta);
  const std::span images(gif->SavedImages, static_cast<std::size_t>(gif->ImageCount));
  for (std::size_t i = 0; i < images.size(); ++i) {
    const auto& image = images[i];
    const std::span blocks(image.ExtensionBlocks, static_cast<std::size_t>(image.ExtensionBlockCount));
    result.loopsForEver = result.loopsForEver || isEndlessLoop(blocks);
    GraphicsControlBlock control{};
    EXPECT_EQ(DGifSavedExtensionToGCB(gif.get(), static_cast<int>(i), &control), GIF_OK);
    const auto* own = image.ImageDesc.ColorMap;
    lay(image, own ? *own : *gif->SColorMap, control.TransparentColor, screen);
    result.images.push_back(
        {.place = QRect(image.ImageDesc.Left, image.ImageDesc.Top, image.ImageDesc.Width, image.ImageDesc.Height),
         .delay = control.DelayTime,
         .disposal = control.DisposalMode,
         .transparent = control.TransparentColor,
         .ownColours = own ? own->ColorCount : 0,
         .shown = screen.copy()});
  }
  return result;
}

}  // namespace Nimbrel::Testing
