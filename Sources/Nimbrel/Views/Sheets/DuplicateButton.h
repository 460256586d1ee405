#pragma once

#include "Model/Models.h"

#include <QAbstractButton>
#include <QImage>

namespace Nimbrel {

/// One shot of a group of duplicates: its thumbnail, and under it what becomes of it. A click is to choose it.
class DuplicateButton final : public QAbstractButton {
  Q_OBJECT

 public:
  static constexpr int thumbWidth = 150;
  static constexpr int thumbHeight = 100;

  explicit DuplicateButton(QWidget* parent);

  /// `name` is what it is called for who does not see it.
  void setShot(const ShotPtr& shot, const QString& name);
  [[nodiscard]] const ShotPtr& shot() const { return shot_; }
  void setKeeper(bool isKeeper);
  [[nodiscard]] bool isKeeper() const { return isKeeper_; }
  /// Shows a lock and nothing of the picture.
  void setLocked(bool isLocked);
  [[nodiscard]] bool isLocked() const { return isLocked_; }
  /// Null for none.
  void setThumb(const QImage& image);
  [[nodiscard]] bool hasThumb() const { return !thumb_.isNull(); }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintThumb(QPainter& painter, const QRect& box) const;
  void tellName();

  ShotPtr shot_;
  QString name_;
  QImage thumb_;
  bool isKeeper_ = false;
  bool isLocked_ = false;
};

}  // namespace Nimbrel
