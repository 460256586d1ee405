#pragma once

#include "Views/Shared/Theme.h"

#include <QWidget>

namespace Nimbrel {

/// A rule that takes one device-independent pixel and is drawn in whole pixels of the screen.
class Hairline final : public QWidget {
  Q_OBJECT

 public:
  /// `inset` leaves room free at the beginning of a horizontal rule, in the direction of the script.
  explicit Hairline(Qt::Orientation orientation, int inset = 0, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::Orientation orientation_;
  int inset_;
};

}  // namespace Nimbrel
