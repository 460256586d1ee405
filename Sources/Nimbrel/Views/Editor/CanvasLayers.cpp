#include "Views/Editor/CanvasLayers.h"

#include "Views/Editor/EditorTool.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Theme.h"

namespace Nimbrel {

namespace {

using Kind = Annotation::Kind;

constexpr double blockOpacity = 0.45;
constexpr double blockRadius = 2;
constexpr QMarginsF blockMargins(2, 1, 2, 1);
/// From here on its pixels are told apart.
constexpr double largestSmoothPixel = 2;

void paintItem(QPainter& painter, const MarkCanvas& canvas, const Annotation& item) {
  painter.save();
  EditorTools::of(item.kind).paintMark(painter, canvas, item);
  painter.restore();
}

}  // namespace

void CanvasLayers::dropAll() {
  picture_ = {};
  marks_ = {};
}

void CanvasLayers::paint(QPainter& painter, const QRectF& part, const CanvasGeometry& geometry,
                         const EditorPicture& picture, const EditorState& state) {
  const auto scale = Painting::scaleOf(painter);
  if (geometry != geometry_ || scale != scale_) dropAll();
  geometry_ = geometry;
  scale_ = scale;
  if (picture_.isNull()) paintPicture(picture);
  if (marks_.isNull()) paintMarks(picture, state);
  painter.drawPixmap(part, marks_, QRectF(part.topLeft() * scale, part.size() * scale));
}

QPixmap CanvasLayers::blank() const {
  QPixmap pixmap((geometry_.room * scale_).toSize().expandedTo({1, 1}));
  pixmap.setDevicePixelRatio(scale_);
  return pixmap;
}

void CanvasLayers::paintPicture(const EditorPicture& picture) {
  picture_ = blank();
  picture_.fill(themeColor(Token::Track));
  const auto place = geometry_.place();
  const auto seen = place.intersected(QRectF(QPointF(), geometry_.room));
  if (picture.isNull() || seen.isEmpty()) return;
  const auto& level = picture.level(place.width() * scale_);
  // Only what is seen is scaled, however large the picture.
  const auto across = level.width() / place.width();
  const auto down = level.height() / place.height();
  const QRectF source((seen.x() - place.x()) * across, (seen.y() - place.y()) * down, seen.width() * across,
                      seen.height() * down);
  QPainter painter(&picture_);
  painter.setRenderHint(QPainter::SmoothPixmapTransform,
                        place.width() * scale_ < largestSmoothPixel * picture.size().width());
  painter.drawImage(seen, level, source);
}

void CanvasLayers::paintMarks(const EditorPicture& picture, const EditorState& state) {
  marks_ = picture_;
  if (geometry_.fitted().isEmpty()) return;
  QPainter painter(&marks_);
  painter.save();
  painter.setClipRect(geometry_.place());
  painter.translate(geometry_.place().topLeft());
  painter.scale(geometry_.zoom, geometry_.zoom);
  const MarkCanvas canvas{.fitted = geometry_.fitted(), .blurred = picture.blurred};
  const auto paintAll = [&](const auto& isWanted) {
    for (const auto& item : state.items()) {
      if (isWanted(item.kind)) paintItem(painter, canvas, item);
    }
  };
  // As it is saved: blurs are of the bare picture, under all other marks. What will be cut off shows over all of them.
  paintAll([](Kind kind) { return kind == Kind::blur; });
  paintAll([](Kind kind) { return kind != Kind::blur && kind != Kind::crop; });
  paintAll([](Kind kind) { return kind == Kind::crop; });
  painter.restore();
  if (!EditorTools::at(state.tool()).kind()) paintBlocks(painter, state);
}

void CanvasLayers::paintBlocks(QPainter& painter, const EditorState& state) const {
  auto color = themeColor(Token::Accent);
  color.setAlphaF(static_cast<float>(blockOpacity));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, 1));
  painter.setBrush(Qt::NoBrush);
  const auto shown = geometry_.shown();
  for (const auto& block : state.blocks()) {
    const QRectF place(block.rect.x() * shown.width(), block.rect.y() * shown.height(),
                       block.rect.width() * shown.width(), block.rect.height() * shown.height());
    painter.drawRoundedRect(place.translated(geometry_.place().topLeft()).marginsAdded(blockMargins), blockRadius,
                            blockRadius);
  }
}

}  // namespace Nimbrel
