#include "Store/FolderWatcher.h"

#include <utility>

namespace Nimbrel {

namespace {

constexpr Seconds latency{0.6};

}  // namespace

FolderWatcher::FolderWatcher(FileEvents& events, std::function<void()> onChange)
    : events_(events), onChange_(std::move(onChange)) {}

FolderWatcher::~FolderWatcher() { events_.watch({}, latency, {}); }

void FolderWatcher::watch(const std::vector<std::string>& sources, const std::vector<std::string>& libraries) {
  std::vector<WatchedFolder> folders;
  folders.reserve(sources.size() + libraries.size());
  for (const auto& source : sources) folders.push_back({source, WatchDepth::Flat});
  for (const auto& library : libraries) folders.push_back({library, WatchDepth::Recursive});
  events_.watch(std::move(folders), latency, onChange_);
}

}  // namespace Nimbrel
