#pragma once

#include "Views/Settings/EntryRows.h"
#include "Views/Settings/SettingsPane.h"

#include <cstddef>
#include <string>

namespace Nimbrel {

/// The folders in which new shots are looked for.
class WatchedFoldersPane final : public SettingsPane {
  Q_OBJECT

 public:
  explicit WatchedFoldersPane(Store& store);

 private:
  void chooseFolder();
  /// Unless it is watched already.
  void add(const std::string& path);
  void remove(std::size_t index);

  EntryRows* folders_;
};

}  // namespace Nimbrel
