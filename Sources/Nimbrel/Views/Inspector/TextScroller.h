#pragma once

#include "Views/Inspector/BoxedText.h"
#include "Views/Inspector/TextPieces.h"

#include <QTextLayout>

namespace Nimbrel {

/// Recognised text that can be selected and not changed, of any length, as high as it needs to be up to a limit. What
/// is copied from it is the text as it is.
class TextScroller final : public BoxedText {
  Q_OBJECT

 public:
  static constexpr int mostHeight = 240;

  explicit TextScroller(QWidget* parent = nullptr);

  void setText(const QString& text);
  [[nodiscard]] const QString& text() const { return text_; }
  /// The stretches of the text to mark, from left to right and apart from each other. Of each the background counts.
  void setMatches(QList<QTextLayout::FormatRange> matches);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;

 private:
  void fit();
  /// The place in the text of a place in the document.
  [[nodiscard]] qsizetype placeOf(int position) const;
  void paintMatches(QPainter& painter, const QTextBlock& block, QPointF corner) const;

  QString text_;
  TextPieces pieces_;
  QList<QTextLayout::FormatRange> matches_;
};

}  // namespace Nimbrel
