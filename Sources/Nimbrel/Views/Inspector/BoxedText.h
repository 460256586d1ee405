#pragma once

#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"

#include <QPlainTextEdit>
#include <QTextBlock>

namespace Nimbrel {

/// Plain text of several lines in a box with round corners, laid out as far as it is seen. The box shows the focus when
/// the text can be edited.
class BoxedText : public QPlainTextEdit {
  Q_OBJECT

 public:
  /// How a box looks, in device-independent pixels.
  struct Look {
    TextStyle style = TextStyle::Body;
    int linePitch = 0;  ///< from line to line, where no letter needs more
    int padding = 0;
    int radius = 0;
    Token outline = Token::Border;
  };

  explicit BoxedText(const Look& look, QWidget* parent = nullptr);

  /// The text's lines with the padding above and below them, counted no further than that height.
  [[nodiscard]] int contentHeight(int most) const;

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  Look look_;
};

}  // namespace Nimbrel
