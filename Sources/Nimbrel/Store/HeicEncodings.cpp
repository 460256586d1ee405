#include "Store/HeicEncodings.h"

#include "Platform/FileSystem.h"
#include "Platform/HeicEncoder.h"
#include "Platform/ImageFile.h"

#include <QtConcurrent/QtConcurrentRun>

#include <QFutureWatcher>

#include <utility>

namespace Nimbrel {

namespace {

std::optional<HeicEncodings::File> encoded(const HeicEncodings::Picture& picture, double quality) {
  auto state = stateOfFile(picture.path);
  const auto image = ImageFile::picture(picture.path);
  if (image.isNull()) return std::nullopt;
  auto content = HeicEncoder::encode(image, quality, picture.limit);
  if (!content) return std::nullopt;
  return HeicEncodings::File{.content = *std::move(content), .source = state};
}

}  // namespace

FileState stateOfFile(const std::string& path) {
  return {.modified = FileSystem::modificationDate(path), .size = FileSystem::size(path)};
}

HeicEncodings::HeicEncodings(QThreadPool& pool, std::vector<Picture> pictures, double quality)
    : pool_(pool), pictures_(std::move(pictures)), quality_(quality) {
  startMore();
}

HeicEncodings::~HeicEncodings() { *isStopped_ = true; }

std::optional<HeicEncodings::File> HeicEncodings::next() {
  auto file = underWay_.front().takeResult();
  underWay_.pop_front();
  startMore();
  return file;
}

void HeicEncodings::whenNext(QObject* context, std::function<void()> then) const {
  auto* watcher = new QFutureWatcher<std::optional<File>>(context);
  QObject::connect(watcher, &QFutureWatcherBase::finished, context, [watcher, then = std::move(then)] {
    watcher->deleteLater();
    then();
  });
  watcher->setFuture(underWay_.front());
}

void HeicEncodings::startMore() {
  // One more than there are cores, so that none waits while a finished file is put in its place.
  const auto most = static_cast<std::size_t>(pool_.maxThreadCount()) + 1;
  for (; started_ < pictures_.size() && underWay_.size() < most; ++started_) {
    const auto work = [picture = pictures_[started_], quality = quality_, isStopped = isStopped_] {
      return *isStopped ? std::nullopt : encoded(picture, quality);
    };
    underWay_.push_back(QtConcurrent::run(&pool_, work));
  }
}

}  // namespace Nimbrel
