#pragma once

#include "Model/Annotation.h"

#include <QRectF>
#include <QSizeF>
#include <QUuid>

#include <cstddef>
#include <string>
#include <vector>

namespace Nimbrel {

/// The marks on one picture, in the order in which they are drawn, and what was taken from them. A value.
class MarkList {
 public:
  [[nodiscard]] const std::vector<Annotation>& items() const { return items_; }
  [[nodiscard]] bool isEmpty() const { return items_.empty(); }
  [[nodiscard]] std::size_t countOf(Annotation::Kind kind) const;

  /// Adds a mark on top; a crop takes the place of every other. What could be put back before cannot be afterwards.
  void add(Annotation mark);
  /// Covers a rectangle with black, 0 to 1, unless exactly this one is covered.
  void addRedaction(const QRectF& rect);

  /// Takes the last mark.
  void undo();
  /// Takes all marks, in one step.
  void clear();
  /// Puts back what the last such step took that is not back yet.
  void redo();

  // Neither of these is a step.

  /// Moves the last mark by so many pixels of a picture of that size; no further than its edges, in its own shape.
  void nudge(QSizeF pixels, QSizeF picture);
  /// Changes what a label says. Nothing happens when there is no such mark.
  void setText(const QUuid& id, std::string text);

 private:
  std::vector<Annotation> items_;
  std::vector<std::vector<Annotation>> taken_;  ///< by step, the last one at the end
};

}  // namespace Nimbrel
