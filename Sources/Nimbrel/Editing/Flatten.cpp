#include "Editing/Flatten.h"

#include "Editing/Blur.h"
#include "Editing/MarkPainter.h"
#include "Editing/PixelSpace.h"
#include "Platform/ImageFile.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <ranges>
#include <utility>
#include <vector>

namespace Nimbrel::Flatten {

namespace {

using Kind = Annotation::Kind;

/// Smaller crops are slips of the pointer. The tolerance absorbs the rounding of end - start: 0.51 - 0.5 is a little
/// over 0.01.
constexpr double smallestCrop = 0.01 + 1e-9;

std::vector<Annotation> blursAmong(std::span<const Annotation> items) {
  std::vector<Annotation> blurs;
  std::ranges::copy_if(
      items, std::back_inserter(blurs), [](Kind kind) { return kind == Kind::blur; }, &Annotation::kind);
  return blurs;
}

QImage cropped(QImage picture, std::span<const Annotation> items) {
  const auto backwards = std::views::reverse(items);
  const auto crop = std::ranges::find(backwards, Kind::crop, &Annotation::kind);
  if (crop == backwards.end() || !hasPlace(*crop)) return picture;
  const auto rect = crop->rect();
  if (rect.width() <= smallestCrop || rect.height() <= smallestCrop) return picture;
  const auto part = touchedPixels(inPixels(*crop, picture.size()), picture.size());
  if (part.isEmpty()) return picture;
  auto cut = picture.copy(part);
  return cut.isNull() ? picture : cut;
}

}  // namespace

QImage render(const std::string& url, std::span<const Annotation> items) {
  // Without memory for a blur or a mark nothing is given out: what was to be hidden might still be seen.
  try {
    auto picture = ImageFile::picture(url);
    if (picture.isNull()) return {};
    if (auto base = blurred(picture, blursAmong(items)); !base.isNull()) picture = std::move(base);
    paintMarks(picture, items);
    return cropped(std::move(picture), items);
  } catch (const std::bad_alloc&) {
    return {};
  }
}

}  // namespace Nimbrel::Flatten
