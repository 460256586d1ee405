#include "Store/NameKeys.h"

#include "Foundation/NameOrder.h"

#include <QtConcurrentMap>

#include <algorithm>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

/// Fewer keys are worked out sooner than threads are found for them.
constexpr std::size_t worthThreads = 2000;

}  // namespace

void NameKeys::prepare(const ShotList& shots) {
  if (addedSinceTidied_ > keys_.size() / 8 + worthThreads) {
    std::erase_if(keys_, [](const auto& entry) { return entry.second.shot.expired(); });
    addedSinceTidied_ = 0;
  }
  using Work = std::pair<const Shot*, std::string*>;
  std::vector<Work> missing;
  for (const auto& shot : shots) {
    auto& key = keys_[shot.get()];
    if (!key.shot.expired()) continue;
    key.shot = shot;
    missing.emplace_back(shot.get(), &key.bytes);
  }
  addedSinceTidied_ += missing.size();
  const auto workOut = [](const Work& work) { *work.second = NameOrder::sortKey(work.first->name); };
  if (missing.size() < worthThreads) {
    std::ranges::for_each(missing, workOut);
  } else {
    QtConcurrent::blockingMap(missing, workOut);
  }
}

std::string_view NameKeys::of(const ShotPtr& shot) const {
  const auto key = keys_.find(shot.get());
  return key == keys_.end() ? std::string_view() : key->second.bytes;
}

void NameKeys::clear() {
  keys_ = {};
  addedSinceTidied_ = 0;
}

}  // namespace Nimbrel
