#pragma once

#include <QLayout>
#include <QList>

#include <memory>
#include <vector>

namespace Nimbrel {

/// Puts items side by side at their preferred sizes, in the direction of the script, and begins a new row where one is
/// full. An item wider than the layout gets the whole width.
class FlowLayout final : public QLayout {
  Q_OBJECT

 public:
  /// `gap` is between items and between rows, in device-independent pixels.
  FlowLayout(int gap, QWidget* parent);
  ~FlowLayout() override;

  void addItem(QLayoutItem* item) override;
  [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
  [[nodiscard]] QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSize() const override;
  void setGeometry(const QRect& place) override;

 private:
  /// Where each item that is shown stands in that place, read from left to right.
  [[nodiscard]] QList<QRect> placesIn(const QRect& place) const;
  [[nodiscard]] QList<QLayoutItem*> shown() const;

  std::vector<std::unique_ptr<QLayoutItem>> items_;
};

}  // namespace Nimbrel
