#include "Analysis/Sensitive.h"
#include "Platform/Process.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

namespace Nimbrel {

std::size_t Store::rescanSensitive() {
  const Operation operation(*this);
  const Database::QuickCommits quickly(*database_);
  std::size_t found = 0;
  for (const auto& shot : shots_) {
    if (Process::isEnding()) break;
    if (!shot->ocrDone || shot->ocr.empty()) continue;
    const auto kinds = Sensitive::kindsIn(shot->ocr);
    if (kinds != shot->sensitive) database_->setOCR(shot->id, shot->ocr, kinds);
    if (!kinds.empty()) ++found;
  }
  reloadIfChanged();
  return found;
}

bool Store::isProtected(const Shot& shot) const { return settings_.protectSensitive() && !shot.sensitive.empty(); }

}  // namespace Nimbrel
