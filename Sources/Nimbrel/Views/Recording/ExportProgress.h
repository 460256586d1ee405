#pragma once

#include "Views/Recording/RecordingExports.h"
#include "Views/Recording/RemainingTime.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>
#include <QWidget>

namespace Nimbrel {

/// How far an export is and how long it still takes; hidden while there is none.
class ExportProgress final : public QWidget {
  Q_OBJECT

 public:
  explicit ExportProgress(QWidget* parent = nullptr);

  /// Follows it until it ends.
  void follow(RecordingExport* run);
  void stop();

 private:
  void refresh();

  QPointer<RecordingExport> run_;
  QProgressBar* bar_;
  QLabel* left_;
  QTimer looking_;
  QElapsedTimer since_;
  RemainingTime remaining_;
};

}  // namespace Nimbrel
