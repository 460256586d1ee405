#pragma once

#include <QLabel>
#include <QString>

namespace Nimbrel {

/// A name on two lines at most, broken wherever that is needed and shortened in the middle of the second, so that its
/// end is seen. Its accessible name is the whole.
class TwoLineLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit TwoLineLabel(QWidget* parent = nullptr);

  /// On one line.
  void setFullText(const QString& text);
  [[nodiscard]] const QString& fullText() const { return fullText_; }

  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  /// The height of two lines.
  [[nodiscard]] static int mostHeight();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// What stands on the lines in that width.
  [[nodiscard]] QStringList linesIn(int width) const;

  QString fullText_;
};

}  // namespace Nimbrel
