#pragma once

#include "Views/Recording/Figure.h"

#include <QImage>

namespace Nimbrel {

/// A picture of a recording, fitted into a place of fixed height, never larger than it is; a symbol while there is
/// none.
class FramePreview final : public Figure {
  Q_OBJECT

 public:
  explicit FramePreview(QWidget* parent = nullptr);

  /// In pixels of the screen.
  void setFrame(double seconds, const QImage& frame);
  [[nodiscard]] const QImage& frame() const { return frame_; }
  /// The moment that is shown.
  [[nodiscard]] double seconds() const { return seconds_; }
  /// How large a picture can be, in pixels of the screen.
  [[nodiscard]] QSize room() const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double seconds_ = 0;
  QImage frame_;
};

}  // namespace Nimbrel
