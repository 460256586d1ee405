#pragma once

#include "Store/Store.h"
#include "Views/Shared/ElidedLabel.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// What takes captures in the panel of the menu bar, what the last recording is good for, and what came of it all.
class CaptureSection final : public QWidget {
  Q_OBJECT

 public:
  /// The store must outlive it.
  explicit CaptureSection(Store& store, QWidget* parent = nullptr);

 Q_SIGNALS:
  /// The tools of the last recording are wanted, which may be open already.
  void editRequested();

 private:
  void addCaptureButtons(QVBoxLayout& column);
  void addRecordingButtons(QVBoxLayout& column);
  void refresh();

  Store& store_;
  QPushButton* stop_ = nullptr;
  QWidget* lastRecording_ = nullptr;
  ElidedLabel* status_;
};

}  // namespace Nimbrel
