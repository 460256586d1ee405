#include "Foundation/NameOrder.h"
#include "Foundation/Text.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"
#include "Store/Tags.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

void Store::addTag(std::string_view text, const ShotList& shots) {
  const Operation operation(*this);
  // Blanks that were commas are trimmed as well: "red," is the tag "red", not another one that looks like it.
  const auto blanked = withoutCommas(text);
  const std::string tag(Text::trimmed(blanked));
  if (tag.empty()) return;
  changeTags(shots, [&](Tags tags) { return withAll(std::move(tags), {tag}); });
  reload();
}

void Store::removeTag(std::string_view tag, const ShotList& shots) {
  const Operation operation(*this);
  changeTags(shots, [&](Tags tags) { return withoutTag(std::move(tags), tag); });
  reload();
}

void Store::assignProject(std::string_view name, const ShotList& shots) {
  const auto blanked = withoutCommas(name);
  const std::string project(Text::trimmedWithLineBreaks(blanked));
  if (project.empty()) return;
  const Operation operation(*this);
  changeTags(shots, [&](Tags tags) { return withAll(std::move(tags), {projectTag(project)}); });
  // Told at once to who follows the settings, and who may reload: the list may be our own, which that replaces.
  auto projects = settings_.projects();
  if (std::ranges::find(projects, project) == projects.end()) {
    projects.push_back(project);
    std::ranges::stable_sort(projects,
                             [](const std::string& a, const std::string& b) { return NameOrder::compare(a, b) < 0; });
    settings_.projects.set(std::move(projects));
  }
  reload();
  setStatus("Added to " + project);
}

std::optional<Shot> Store::currentRow(const Shot& shot) const {
  auto row = database_->shot(shot.id);
  if (row && row->added != shot.added) row.reset();
  return row;
}

void Store::changeTags(const ShotList& shots, const TagChange& change) {
  const Database::QuickCommits quickly(*database_);
  for (const auto& shot : shots) changeTags(*shot, change);
  database_->waitForDisk();
}

void Store::changeTags(const Shot& shot, const TagChange& change) {
  // Another process may have tagged it since it was read.
  const auto row = currentRow(shot);
  if (!row) return;
  const auto tags = change(row->tags);
  if (tags != row->tags) database_->setTags(shot.id, tags);
}

}  // namespace Nimbrel
