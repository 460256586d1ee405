#pragma once

#include <QDialog>

namespace Nimbrel {

/// What stands in for the tools of a recording when there is none. Escape closes it.
class NoRecordingSheet final : public QDialog {
  Q_OBJECT

 public:
  explicit NoRecordingSheet(QWidget* window);
};

}  // namespace Nimbrel
