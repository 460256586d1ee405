#pragma once

#include "Views/Settings/RuleGroup.h"
#include "Views/Settings/SettingsPane.h"

#include <QUuid>

#include <cstddef>
#include <vector>

namespace Nimbrel {

/// The user's rules, which are edited in place.
class RulesPane final : public SettingsPane {
  Q_OBJECT

 public:
  explicit RulesPane(Store& store);

 private:
  void addButtons();
  void refresh();
  void insertGroup(std::size_t index);
  void removeGroup(std::size_t index);
  void save(const RuleGroup& group, const AutomationRule& rule);
  void addRule();
  void remove(const QUuid& id);

  std::vector<RuleGroup*> groups_;  ///< one for each rule, in their order
  QPushButton* apply_ = nullptr;
};

}  // namespace Nimbrel
