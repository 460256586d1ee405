#include "Views/Editor/EditorState.h"
#include "Views/Editor/EditorTool.h"
#include "Views/Editor/MarkShapes.h"
#include "Views/Shared/Theme.h"

namespace Nimbrel::EditorTools {

namespace {

constexpr double radius = 14;

class StepTool final : public EditorTool {
 public:
  [[nodiscard]] std::optional<Annotation::Kind> kind() const override { return Annotation::Kind::step; }
  [[nodiscard]] QString title() const override { return QStringLiteral("Step"); }
  [[nodiscard]] QString symbol() const override { return QStringLiteral("1.circle"); }
  [[nodiscard]] QString hint() const override { return QStringLiteral("Click to drop a numbered step."); }

  void click(EditorState& state, QPointF point) const override {
    // The number of one that was taken back is given again.
    const auto number = static_cast<int>(state.countOf(Annotation::Kind::step)) + 1;
    state.place(Annotation::Kind::step, point, point, number);
  }

  void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const override {
    const auto center = canvas.point(mark.start);
    const QRectF disc(center - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(MarkShapes::ink(mark.colorIndex));
    painter.drawEllipse(disc);
    painter.setFont(MarkShapes::font());
    painter.setPen(themeColor(Token::InkWhite));
    painter.drawText(disc, Qt::AlignCenter | Qt::TextDontClip, QString::number(mark.number));
  }
};

}  // namespace

const EditorTool& step() {
  static const StepTool tool;
  return tool;
}

}  // namespace Nimbrel::EditorTools
