#include "Store/ShrinkRun.h"

#include "Foundation/FilePath.h"
#include "Foundation/Text.h"
#include "Platform/Process.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::string_view heicExtension = "heic";

ShotList withoutHeic(const ShotList& shots) {
  ShotList others;
  std::ranges::copy_if(shots, std::back_inserter(others), [](const ShotPtr& shot) {
    return Text::lowered(FilePath::extension(shot->path)) != heicExtension;
  });
  return others;
}

std::vector<HeicEncodings::Picture> picturesOf(const ShotList& shots) {
  std::vector<HeicEncodings::Picture> pictures;
  pictures.reserve(shots.size());
  for (const auto& shot : shots) pictures.push_back({.path = shot->path, .limit = shot->bytes});
  return pictures;
}

}  // namespace

ShrinkRun::ShrinkRun(QThreadPool& pool, const ShotList& shots, double quality, Replace replace)
    : shots_(withoutHeic(shots)), encodings_(pool, picturesOf(shots_), quality), replace_(std::move(replace)) {}

bool ShrinkRun::isOver() const { return done_ == shots_.size() || Process::isEnding(); }

void ShrinkRun::takeNext() {
  const auto& shot = *shots_[done_++];
  const auto heic = encodings_.next();
  // What was saved over the picture meanwhile is not in the new file.
  if (!heic || stateOfFile(shot.path) != heic->source || !replace_(shot, heic->content)) return;
  outcome_.oldFiles.push_back({.path = shot.path, .state = heic->source});
  outcome_.bytesSaved += shot.bytes - static_cast<std::int64_t>(heic->content.size());
}

void ShrinkRun::whenReady(QObject* context, std::function<void()> then) const {
  encodings_.whenNext(context, std::move(then));
}

}  // namespace Nimbrel
