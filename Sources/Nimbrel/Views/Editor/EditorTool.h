#pragma once

#include "Model/Annotation.h"
#include "Platform/PictureReader.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <array>
#include <optional>
#include <span>

namespace Nimbrel {

class EditorState;

/// What marks are painted over: the picture at its fitted size, whose upper left is the painter's origin.
struct MarkCanvas {
  QSizeF fitted;
  const QImage& blurred;  ///< all of the picture, small enough to look blurred when it is enlarged to the fitted size

  /// Of 0 to 1.
  [[nodiscard]] QPointF point(QPointF point) const;
  [[nodiscard]] QRectF rect(const Annotation& mark) const;
};

/// One tool of the editor: what it is called, what gestures with it do, and how its marks look on the canvas. That is
/// near to what Flatten saves, and decides nothing. Without state; there is one of each. Main thread.
class EditorTool {
 public:
  EditorTool() = default;
  virtual ~EditorTool() = default;
  EditorTool(const EditorTool&) = delete;
  EditorTool& operator=(const EditorTool&) = delete;

  /// What it places; absent for the one that copies text.
  [[nodiscard]] virtual std::optional<Annotation::Kind> kind() const = 0;
  /// As the user reads it; the symbol is one of Symbols.
  [[nodiscard]] virtual QString title() const = 0;
  [[nodiscard]] virtual QString symbol() const = 0;
  /// How to use it: for most, to drag.
  [[nodiscard]] virtual QString hint() const;

  /// Both points are of 0 to 1. Tools that only know the other gesture ignore one.
  virtual void drag(EditorState& state, QPointF start, QPointF end) const;
  virtual void click(EditorState& state, QPointF point) const;

  /// Paints a mark of its kind, and a drag that is under way between two points of the fitted picture: for most, the
  /// rectangle between them.
  virtual void paintMark(QPainter& painter, const MarkCanvas& canvas, const Annotation& mark) const;
  virtual void paintDrag(QPainter& painter, QPointF from, QPointF to, const QColor& ink) const;
};

/// A tool that places a rectangle: drags that are hardly any are slips, and place nothing.
class RectangleTool : public EditorTool {
 public:
  void drag(EditorState& state, QPointF start, QPointF end) const override;
};

namespace EditorTools {

// Each in a file of its own, in Tools.
[[nodiscard]] const EditorTool& text();
[[nodiscard]] const EditorTool& blackBar();
[[nodiscard]] const EditorTool& blur();
[[nodiscard]] const EditorTool& box();
[[nodiscard]] const EditorTool& arrow();
[[nodiscard]] const EditorTool& highlight();
[[nodiscard]] const EditorTool& step();
[[nodiscard]] const EditorTool& label();
[[nodiscard]] const EditorTool& crop();

/// All tools in the order in which the user sees them.
[[nodiscard]] std::span<const EditorTool* const> all();
/// The tool of a row.
[[nodiscard]] const EditorTool& at(int index);
/// The one whose marks are of that kind.
[[nodiscard]] const EditorTool& of(Annotation::Kind kind);

}  // namespace EditorTools

}  // namespace Nimbrel
