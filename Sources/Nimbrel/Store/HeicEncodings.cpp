#include "Store/HeicEncodings.h"

#include "Platform/HeicEncoder.h"
#include "Platform/ImageFile.h"

#include <QtConcurrent/QtConcurrentRun>

#include <utility>

namespace Nimbrel {

namespace {

std::optional<std::string> encoded(const HeicEncodings::Picture& picture, double quality) {
  const auto image = ImageFile::picture(picture.path);
  return image.isNull() ? std::nullopt : HeicEncoder::encode(image, quality, picture.limit);
}

}  // namespace

HeicEncodings::HeicEncodings(std::vector<Picture> pictures, double quality)
    : pictures_(std::move(pictures)), quality_(quality) {
  startMore();
}

HeicEncodings::~HeicEncodings() {
  pool_.clear();
  pool_.waitForDone();
}

std::optional<std::string> HeicEncodings::next() {
  auto file = underWay_.front().takeResult();
  underWay_.pop_front();
  startMore();
  return file;
}

void HeicEncodings::startMore() {
  // One more than there are cores, so that none waits while a finished file is put in its place.
  const auto most = static_cast<std::size_t>(pool_.maxThreadCount()) + 1;
  for (; started_ < pictures_.size() && underWay_.size() < most; ++started_) {
    underWay_.push_back(QtConcurrent::run(
        &pool_, [picture = pictures_[started_], quality = quality_] { return encoded(picture, quality); }));
  }
}

}  // namespace Nimbrel
