#pragma once

#include "Catalogue/Settings.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// Where captures go and how long they wait, in the panel of the menu bar.
class CaptureOptionsSection final : public QWidget {
  Q_OBJECT

 public:
  /// The settings must outlive it.
  explicit CaptureOptionsSection(Settings& settings, QWidget* parent = nullptr);

 private:
  [[nodiscard]] static QComboBox* addPicker(QHBoxLayout& row, const QString& title, const QString& name);
  void refresh();

  Settings& settings_;
  QComboBox* destination_;
  QComboBox* delay_;
};

}  // namespace Nimbrel
