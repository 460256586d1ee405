#include "Views/Editor/EditorTool.h"

namespace Nimbrel::EditorTools {

namespace {

class BlurTool final : public RectangleTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::blur; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Blur"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("drop.halffull"); }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    if (canvas.blurred.isNull()) return;
    const auto place = canvas.rect(mark);
    const auto part = mark.rect();
    const QRectF source(part.x() * canvas.blurred.width(), part.y() * canvas.blurred.height(),
                        part.width() * canvas.blurred.width(), part.height() * canvas.blurred.height());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, canvas.blurred, source);
  }
};

}  // namespace

const EditorTool& blur() {
  static const BlurTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
