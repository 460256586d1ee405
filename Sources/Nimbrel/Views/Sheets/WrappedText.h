#pragma once

#include "Views/Shared/TextStyles.h"

#include <QLabel>

namespace Nimbrel {

/// Plain text on as many lines as its width asks for, each of the height that its style gives to lines, which a label
/// by itself does not keep.
class WrappedText final : public QLabel {
  Q_OBJECT

 public:
  WrappedText(const QString& text, TextStyle style, Token token);

  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// Breaks the text into lines of that width, and draws them where a painter is given; their height.
  int layOut(int width, QPainter* painter) const;

  int lineHeight_;
};

}  // namespace Nimbrel
