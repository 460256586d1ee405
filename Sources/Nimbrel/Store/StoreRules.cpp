#include "Analysis/ContentGrouping.h"
#include "Analysis/RuleMatching.h"
#include "Foundation/NameOrder.h"
#include "Foundation/Text.h"
#include "Platform/Process.h"
#include "Store/RuleEffect.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace Nimbrel {

namespace {

bool canMatch(const AutomationRule& rule) {
  return rule.enabled &&
         !(Text::trimmedWithLineBreaks(rule.containsText).empty() && Text::trimmedWithLineBreaks(rule.source).empty());
}

bool asksForSource(const AutomationRule& rule) { return !Text::trimmedWithLineBreaks(rule.source).empty(); }

}  // namespace

void Store::applyAutomationRules(const ShotList& shots) {
  auto rules = settings_.automationRules();
  std::erase_if(rules, std::not_fn(canMatch));
  if (rules.empty()) return;
  const Operation operation(*this);
  const auto pass = applyRules(rules, shots);
  if (!pass.changed && pass.toFile.empty()) return;
  reload();
  fileThose(pass.toFile);
  if (pass.changed) setStatus("Applied automatic rules");
}

Store::RulePass Store::applyRules(const std::vector<AutomationRule>& rules, const ShotList& shots) {
  const Database::QuickCommits quickly(*database_);
  const bool needsSource = std::ranges::any_of(rules, asksForSource);
  ruleMemory_.beginPass(rules, settings_.projects());
  RulePass pass;
  for (const auto& shot : shots) {
    if (Process::isEnding()) break;
    if (ruleMemory_.isSettled(shot)) continue;
    const auto source = needsSource ? sourceTitle(shot->id) : std::string();
    RuleEffect effect{.tags = shot->tags, .projects = {}};
    for (const auto& rule : rules) {
      if (matches(rule, *shot, source)) effect = withRule(std::move(effect), rule, *shot);
    }
    addProjects(effect.projects);
    if (effect.favorite) database_->setFavorite(shot->id, true);
    if (effect.tags != shot->tags) database_->setTags(shot->id, effect.tags);
    if (effect.file) pass.toFile.insert(shot->id);
    const bool changes = effect.favorite || effect.tags != shot->tags;
    pass.changed = pass.changed || changes;
    if (!changes && !effect.file) ruleMemory_.settle(shot);
  }
  return pass;
}

std::string Store::sourceTitle(ShotID id) const {
  const auto& group = derived_.sourceOf(id);
  return group.kind == ContentGroup::Kind::app ? group.title : std::string();
}

void Store::addProjects(const std::vector<std::string>& names) {
  for (const auto& name : names) {
    auto projects = settings_.projects();
    if (std::ranges::find(projects, name) != projects.end()) continue;
    projects.push_back(name);
    settings_.projects.set(std::move(projects));
  }
}

void Store::fileThose(const ShotIDSet& ids) {
  ShotList waiting;
  for (const auto& shot : shots_) {
    if (!shot->filed && ids.contains(shot->id)) waiting.push_back(shot);
  }
  if (!waiting.empty()) file(waiting);
}

void Store::assignProject(std::string_view name, const ShotList& shots) {
  const auto project = Text::trimmedWithLineBreaks(name);
  if (project.empty()) return;
  const Operation operation(*this);
  auto projects = settings_.projects();
  if (std::ranges::find(projects, project) == projects.end()) {
    projects.emplace_back(project);
    std::ranges::stable_sort(projects,
                             [](const std::string& a, const std::string& b) { return NameOrder::compare(a, b) < 0; });
    settings_.projects.set(std::move(projects));
  }
  for (const auto& shot : shots) {
    auto tags = withTag(shot->tags, projectTag(project));
    if (tags != shot->tags) database_->setTags(shot->id, tags);
  }
  reload();
  setStatus("Added to " + std::string(project));
}

}  // namespace Nimbrel
