#pragma once

#include "Catalogue/Settings.h"

#include <QSlider>
#include <QWidget>

namespace Nimbrel {

/// How large the thumbnails are: a slider between a small and a large picture, which is all that assistive technology
/// sees of it.
class ThumbnailSizeControl final : public QWidget {
  Q_OBJECT

 public:
  /// The settings must outlive it.
  explicit ThumbnailSizeControl(Settings& settings, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void showSetting();

  Settings& settings_;
  QSlider* slider_;
};

}  // namespace Nimbrel
