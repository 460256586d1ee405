#pragma once

#include "Views/Settings/FolderRow.h"
#include "Views/Settings/SettingsPane.h"

namespace Nimbrel {

/// Where filed shots go, and how.
class LibraryPane final : public SettingsPane {
  Q_OBJECT

 public:
  explicit LibraryPane(Store& store);

 private:
  void chooseFolder();

  FolderRow* folder_;
};

}  // namespace Nimbrel
