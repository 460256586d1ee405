#pragma once

#include "Views/Settings/EntryRows.h"
#include "Views/Settings/SettingsPane.h"

#include <QLineEdit>

#include <cstddef>

namespace Nimbrel {

/// The names of the projects. Shots keep the tag of a project that is removed.
class ProjectsPane final : public SettingsPane {
  Q_OBJECT

 public:
  explicit ProjectsPane(Store& store);

 private:
  void addFieldRow();
  void add();
  void remove(std::size_t index);

  EntryRows* projects_;
  QLineEdit* field_;
  QPushButton* add_;
};

}  // namespace Nimbrel
