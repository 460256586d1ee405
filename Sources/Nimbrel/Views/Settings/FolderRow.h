#pragma once

#include "Views/Shared/ElidedLabel.h"

#include <QPushButton>
#include <QWidget>

#include <string_view>

namespace Nimbrel {

/// The path of a folder, shortened in its middle, and the button that chooses another.
class FolderRow final : public QWidget {
  Q_OBJECT

 public:
  /// The objects in it are called "settings.", the name, and "Path" or "Choose". `purpose` describes the button to
  /// assistive technology.
  FolderRow(const QString& name, const QString& purpose, QWidget* parent = nullptr);

  /// A path, or what is said where there is none.
  void setPath(std::string_view path);

 Q_SIGNALS:
  void chooseClicked();

 private:
  ElidedLabel* path_;
};

}  // namespace Nimbrel
