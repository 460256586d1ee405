#pragma once

#include "Views/Shared/TextStyles.h"

#include <QLabel>

namespace Nimbrel {

/// The text on one line in which nothing steers the lines around it: line feeds and other control characters become
/// spaces, marks that change the direction of text stay visible as the replacement character.
[[nodiscard]] QString oneLine(const QString& text);

/// One line of plain text that is shortened where it does not fit: at its end, or in its middle as paths and names of
/// files are. Its tooltip tells the whole while it is shortened; its accessible name always does.
class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(TextStyle style, Token token = Token::Text, Qt::TextElideMode mode = Qt::ElideRight,
                       QWidget* parent = nullptr);

  /// Any text whatever, as it comes from files.
  void setFullText(const QString& text);
  [[nodiscard]] QString fullText() const { return fullText_; }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void shorten();

  QString fullText_;  ///< on one line
  Qt::TextElideMode mode_;
  int lineHeight_;
};

/// A number at the end of a row; 0 shows nothing. Read with its row, so it has no accessible name of its own.
class CountLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit CountLabel(QWidget* parent = nullptr);
  void setCount(qint64 count);
};

}  // namespace Nimbrel
