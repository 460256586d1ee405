#include "Reader/Labels.h"

#include "Reader/Colour.h"
#include "Reader/EdgeMask.h"
#include "Reader/Letters.h"

#include <algorithm>

namespace Nimbrel::Reader {

namespace {

constexpr int leastHeight = 12;
constexpr int mostHeight = 64;
constexpr int mostWidth = 900;
constexpr double leastShare = 0.4;       ///< of the inside, for its colour
constexpr double leastRoundShare = 0.6;  ///< the same where a letter O might have the form of the label
constexpr int sameColour = 12;
constexpr int faultRarity = 10;  ///< one place in so many along the sides may be wrong: a letter touches it

/// Width of a frame, with what blends it into the inside.
int frameOf(const Box& box) { return 1 + box.height() / 24; }

/// Looks at the middle halves of the sides of a component, from its frame inwards: corners may be round, up to a disc.
class Sides {
 public:
  Sides(const QImage& picture, const Box& box, QRgb colour)
      : picture_(picture), box_(box), frame_(frameOf(box)), colour_(colour) {}

  [[nodiscard]] bool areAround() {
    const Box inside = box_.grownBy(-frame_, -frame_);
    for (int x = inside.left + inside.width() / 4; x < inside.right - inside.width() / 4; ++x) {
      look(x, inside.top, 0, -1);
      look(x, inside.bottom - 1, 0, 1);
    }
    for (int y = inside.top + inside.height() / 4; y < inside.bottom - inside.height() / 4; ++y) {
      look(inside.left, y, -1, 0);
      look(inside.right - 1, y, 1, 0);
    }
    return strange_ * faultRarity <= count_ && open_ * faultRarity <= count_;
  }

 private:
  [[nodiscard]] bool isOfColour(int x, int y) const {
    const int column = std::clamp(x, 0, picture_.width() - 1);
    const int row = std::clamp(y, 0, picture_.height() - 1);
    return colourDistance(pixels(picture_, row)[column], colour_) <= sameColour;
  }

  /// Inside there is the colour, and towards the outside soon another.
  void look(int x, int y, int outX, int outY) {
    ++count_;
    strange_ += isOfColour(x, y) ? 0 : 1;
    bool open = true;
    for (int i = 1; i <= 2 * frame_ + 1 && open; ++i) open = isOfColour(x + i * outX, y + i * outY);
    open_ += open ? 1 : 0;
  }

  const QImage& picture_;
  Box box_;
  int frame_;
  QRgb colour_;
  int count_ = 0;
  int strange_ = 0;
  int open_ = 0;
};

}  // namespace

std::vector<Label> labelsAmong(const std::vector<Component>& components, const QImage& picture) {
  std::vector<Label> labels;
  for (const auto& component : components) {
    const auto& box = component.box;
    if (box.height() < leastHeight || box.height() > mostHeight || box.width() < leastHeight || box.width() > mostWidth)
      continue;
    const Box inside = box.grownBy(-frameOf(box), -frameOf(box));
    const auto common = commonColour(picture, inside);
    if (common.share >= (mayBeOneLetter(box) ? leastRoundShare : leastShare) &&
        Sides(picture, box, common.colour).areAround()) {
      labels.push_back({inside, common.colour});
    }
  }
  return labels;
}

}  // namespace Nimbrel::Reader
