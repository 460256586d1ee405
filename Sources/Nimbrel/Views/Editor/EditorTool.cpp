#include "Views/Editor/EditorTool.h"

#include "Views/Editor/EditorState.h"

#include <algorithm>

namespace Nimbrel {

namespace {

/// Of the picture's width or height.
constexpr double smallestRectangle = 0.004;
constexpr double dragOpacity = 0.3;

}  // namespace

QPointF MarkCanvas::point(QPointF point) const { return {point.x() * fitted.width(), point.y() * fitted.height()}; }

QRectF MarkCanvas::rect(const Annotation& mark) const {
  const auto rect = mark.rect();
  return {point(rect.topLeft()), QSizeF(rect.width() * fitted.width(), rect.height() * fitted.height())};
}

QString EditorTool::hint() const { return QStringLiteral("Drag to place a %1.").arg(title().toLower()); }

void EditorTool::drag(EditorState& /*state*/, QPointF /*start*/, QPointF /*end*/) const {}

void EditorTool::click(EditorState& /*state*/, QPointF /*point*/) const {}

void EditorTool::paintMark(QPainter& /*painter*/, const MarkCanvas& /*canvas*/, const Annotation& /*mark*/) const {}

void EditorTool::paintDrag(QPainter& painter, QPointF from, QPointF to, const QColor& ink) const {
  painter.setOpacity(dragOpacity);
  painter.fillRect(QRectF(from, to).normalized(), ink);
}

void RectangleTool::drag(EditorState& state, QPointF start, QPointF end) const {
  const auto size = QRectF(start, end).normalized().size();
  if (size.width() < smallestRectangle || size.height() < smallestRectangle) return;
  if (const auto placed = kind()) state.place(*placed, start, end);
}

namespace EditorTools {

std::span<const EditorTool* const> all() {
  static const std::array tools{&text(),      &blackBar(), &blur(),  &box(), &arrow(),
                                &highlight(), &step(),     &label(), &crop()};
  return tools;
}

const EditorTool& at(int index) {
  return *all()[static_cast<std::size_t>(std::clamp(index, 0, static_cast<int>(all().size()) - 1))];
}

const EditorTool& of(Annotation::Kind kind) {
  return **std::ranges::find_if(all(), [kind](const EditorTool* tool) { return tool->kind() == kind; });
}

}  // namespace EditorTools

}  // namespace Nimbrel
