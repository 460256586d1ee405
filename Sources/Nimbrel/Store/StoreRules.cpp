#include "Analysis/ContentGrouping.h"
#include "Analysis/RuleMatching.h"
#include "Platform/Process.h"
#include "Store/RuleEffect.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

/// Those that apply to any shot at all.
std::vector<PreparedRule> preparedRules(const std::vector<AutomationRule>& rules) {
  std::vector<PreparedRule> prepared;
  for (const auto& rule : rules) {
    if (PreparedRule ready(rule); ready.canMatch()) prepared.push_back(std::move(ready));
  }
  return prepared;
}

std::vector<AutomationRule> rulesOf(std::span<const PreparedRule> prepared) {
  std::vector<AutomationRule> rules;
  for (const auto& rule : prepared) rules.push_back(rule.rule());
  return rules;
}

}  // namespace

/// What a pass of the rules has left to do.
struct Store::RulePass {
  bool changed = false;
  ShotIDSet toFile;
  std::vector<std::string> projects;  ///< those that the rules named, in this order
};

void Store::applyAutomationRules(const ShotList& shots) {
  const auto rules = preparedRules(settings_.automationRules());
  if (rules.empty()) {
    ruleMemory_.forgetAll();
    return;
  }
  const Operation operation(*this);
  ruleMemory_.beginPass(rulesOf(rules), settings_.projects());
  const auto pass = applyRules(rules, shots);
  // Told at once to who follows the settings, and who may reload: the list may be our own, which that replaces.
  addProjects(pass.projects);
  ruleMemory_.endPass(settings_.projects());
  if (!pass.changed && pass.toFile.empty()) return;
  reload();
  fileThose(pass.toFile);
  if (pass.changed) setStatus("Applied automatic rules");
}

Store::RulePass Store::applyRules(std::span<const PreparedRule> rules, const ShotList& shots) {
  const Database::QuickCommits quickly(*database_);
  const bool needsSource = std::ranges::any_of(rules, &PreparedRule::asksForSource);
  RulePass pass;
  for (const auto& shot : shots) {
    if (Process::isEnding()) break;
    if (ruleMemory_.isSettled(shot)) continue;
    RuleSubject subject(*shot, needsSource ? sourceTitle(shot->id) : std::string());
    RuleEffect effect;
    for (const auto& rule : rules) {
      if (rule.matches(subject)) effect = withRule(std::move(effect), rule.rule(), *shot);
    }
    const bool changes = effect.favorite || withAll(shot->tags, effect.tags) != shot->tags;
    if (changes) write(effect, *shot);
    if (effect.file) pass.toFile.insert(shot->id);
    if (!changes && !effect.file) ruleMemory_.settle(shot);
    pass.changed = pass.changed || changes;
    pass.projects = withAll(std::move(pass.projects), effect.projects);
  }
  if (pass.changed) database_->waitForDisk();
  return pass;
}

void Store::write(const RuleEffect& effect, const Shot& shot) {
  if (effect.favorite && currentRow(shot)) database_->setFavorite(shot.id, true);
  changeTags(shot, [&](Tags tags) { return withAll(std::move(tags), effect.tags); });
}

std::string Store::sourceTitle(ShotID id) const {
  const auto& group = derived_->sourceOf(id);
  return group.kind == ContentGroup::Kind::app ? group.title : std::string();
}

void Store::addProjects(const std::vector<std::string>& names) {
  const auto projects = settings_.projects();
  auto all = withAll(projects, names);
  if (all != projects) settings_.projects.set(std::move(all));
}

void Store::fileThose(const ShotIDSet& ids) {
  ShotList waiting;
  for (const auto& shot : shots_) {
    if (!shot->filed && ids.contains(shot->id)) waiting.push_back(shot);
  }
  if (!waiting.empty()) file(waiting);
}

}  // namespace Nimbrel
