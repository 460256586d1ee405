#include "Foundation/Text.h"
#include "Views/Editor/EditorState.h"
#include "Views/Editor/EditorTool.h"
#include "Views/Shared/Theme.h"

#include <algorithm>
#include <ranges>
#include <string>
#include <vector>

namespace Nimbrel::EditorTools {

namespace {

/// Of the picture's width or height.
constexpr double smallestBox = 0.005;
constexpr double boxOpacity = 0.12;

class TextTool final : public EditorTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return std::nullopt; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Text"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("text.viewfinder"); }
  [[nodiscard]] QString hint() const override {
    return QStringLiteral("Click a line to copy it, or drag a box to copy everything inside.");
  }

  void drag(EditorState& state, QPointF start, QPointF end) const override {
    const auto box = QRectF(start, end).normalized();
    if (box.width() <= smallestBox || box.height() <= smallestBox) return;
    std::vector<std::string> lines;
    for (const auto& block : state.blocks()) {
      if (block.rect.intersects(box)) lines.push_back(block.text);
    }
    state.copy(Text::joined(lines, '\n'));
  }

  void click(EditorState& state, QPointF point) const override {
    // Where outlines overlap, the one that was painted last is on top.
    const auto fromTop = std::views::reverse(state.blocks());
    const auto hit =
        std::ranges::find_if(fromTop, [point](const TextBlock& block) { return block.rect.contains(point); });
    if (hit != fromTop.end()) state.copy(hit->text);
  }

  void paintDrag(QPainter& painter, QPointF from, QPointF to, const QColor& /*ink*/) const override {
    const auto box = QRectF(from, to).normalized();
    auto fill = themeColor(Token::Accent);
    fill.setAlphaF(static_cast<float>(boxOpacity));
    QPen pen(themeColor(Token::Accent), 1);
    // As thin at any zoom.
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawRect(box);
  }
};

}  // namespace

const EditorTool& text() {
  static const TextTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
