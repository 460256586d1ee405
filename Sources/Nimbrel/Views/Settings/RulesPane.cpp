#include "Views/Settings/RulesPane.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

/// The text that stands above the rules.
constexpr int rowsBefore = 1;

}  // namespace

RulesPane::RulesPane(Store& store) : SettingsPane(store, tr("Automatic Rules"), QStringLiteral("rules")) {
  addNotes(
      {tr("Rules match recognized text and the recognized application. They can tag, favorite, file, and assign "
          "projects.")});
  addButtons();
  follow(settings().automationRules, [this] { refresh(); });
  follow(settings().projects, [this] { refresh(); });
}

void RulesPane::addButtons() {
  auto* add = settingsButton(tr("Add Rule"), QStringLiteral("addRule"));
  apply_ = settingsButton(tr("Apply Rules Now"), QStringLiteral("applyRules"));
  connect(add, &QPushButton::clicked, this, &RulesPane::addRule);
  connect(apply_, &QPushButton::clicked, this, [this] { store().applyAutomationRules(store().shots()); });
  addControls({add, apply_});
}

void RulesPane::refresh() {
  const auto& rules = settings().automationRules();
  const auto isGone = [&](const RuleGroup* group) {
    return std::ranges::find(rules, group->rule().id, &AutomationRule::id) == rules.end();
  };
  const auto before = groups_;
  for (auto i = groups_.size(); i > 0; --i) {
    if (isGone(groups_[i - 1])) removeGroup(i - 1);
  }
  for (std::size_t i = 0; i < rules.size(); ++i) {
    if (i >= groups_.size() || groups_[i]->rule().id != rules[i].id) insertGroup(i);
    groups_[i]->setRule(rules[i], settings().projects());
  }
  while (groups_.size() > rules.size()) removeGroup(groups_.size() - 1);
  apply_->setDisabled(rules.empty());
  if (groups_ != before) Q_EMIT rowsChanged();
}

void RulesPane::insertGroup(std::size_t index) {
  auto* group = new RuleGroup;
  groups_.insert(groups_.begin() + static_cast<std::ptrdiff_t>(index), group);
  connect(group, &RuleGroup::edited, this, [this, group](const AutomationRule& rule) { save(*group, rule); });
  connect(group, &RuleGroup::removeClicked, this, [this, group] { remove(group->rule().id); });
  connect(group, &RuleGroup::contentAdded, this, &RulesPane::rowsChanged);
  insertBareRow(static_cast<int>(index) + rowsBefore, group);
}

void RulesPane::removeGroup(std::size_t index) {
  groups_.erase(groups_.begin() + static_cast<std::ptrdiff_t>(index));
  removeRow(static_cast<int>(index) + rowsBefore);
}

void RulesPane::save(const RuleGroup& group, const AutomationRule& rule) {
  const auto index = static_cast<std::size_t>(std::ranges::find(groups_, &group) - groups_.begin());
  auto rules = settings().automationRules();
  if (index >= rules.size()) return;
  rules[index] = rule;
  settings().automationRules.set(std::move(rules));
}

void RulesPane::addRule() {
  AutomationRule rule;
  rule.id = QUuid::createUuid();
  rule.name = "New Rule";
  auto rules = settings().automationRules();
  rules.push_back(std::move(rule));
  settings().automationRules.set(std::move(rules));
  groups_.back()->setOpen(true);
  groups_.back()->editName();
}

void RulesPane::remove(const QUuid& id) {
  auto rules = settings().automationRules();
  std::erase_if(rules, [&id](const AutomationRule& rule) { return rule.id == id; });
  settings().automationRules.set(std::move(rules));
}

}  // namespace Nimbrel
