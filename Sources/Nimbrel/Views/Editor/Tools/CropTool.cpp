#include "Views/Editor/EditorTool.h"
#include "Views/Shared/Theme.h"

#include <QPainterPath>

namespace Nimbrel::EditorTools {

namespace {

constexpr double dragOpacity = 0.18;
constexpr double outsideOpacity = 0.45;  ///< of what will be cut off

QColor veil(double opacity) {
  auto color = themeColor(Token::InkBlack);
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

void outline(QPainter& painter, const QRectF& rect) {
  QPen pen(themeColor(Token::InkWhite), 1);
  // As thin at any zoom.
  pen.setCosmetic(true);
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect);
}

/// The list of marks keeps one crop.
class CropTool final : public RectangleTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::crop; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Crop"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("crop"); }
  [[nodiscard]] QString hint() const override { return QStringLiteral("Drag around the area to keep."); }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    const auto kept = canvas.rect(mark);
    QPainterPath outside;
    outside.addRect(QRectF(QPointF(), canvas.fitted));
    outside.addRect(kept);
    painter.fillPath(outside, veil(outsideOpacity));
    outline(painter, kept);
  }

  void paintDrag(QPainter& painter, QPointF from, QPointF to, const QColor& /*ink*/) const override {
    const auto rect = QRectF(from, to).normalized();
    painter.fillRect(rect, veil(dragOpacity));
    outline(painter, rect);
  }
};

}  // namespace

const EditorTool& crop() {
  static const CropTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
