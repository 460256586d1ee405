#include "Foundation/Text.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>

namespace Nimbrel {

void Store::addTag(std::string_view text, const ShotList& shots) {
  const Operation operation(*this);
  // A comma is what separates tags in the catalogue.
  std::string blanked(text);
  std::ranges::replace(blanked, ',', ' ');
  const std::string tag(Text::trimmed(blanked));
  if (tag.empty()) return;

  const Database::QuickCommits quickly(*database_);
  for (const auto& shot : shots) {
    // Another process may have tagged it since it was read.
    const auto row = database_->shot(shot->id);
    if (!row || std::ranges::find(row->tags, tag) != row->tags.end()) continue;
    auto tags = row->tags;
    tags.push_back(tag);
    database_->setTags(shot->id, tags);
  }
  database_->waitForDisk();
  reload();
}

}  // namespace Nimbrel
