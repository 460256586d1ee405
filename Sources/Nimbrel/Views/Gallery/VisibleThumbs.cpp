#include "Views/Gallery/VisibleThumbs.h"

#include "Views/Shared/Measures.h"

#include <QPainter>

#include <algorithm>

namespace Nimbrel {

namespace {

/// Together a few milliseconds.
constexpr std::size_t unpackedAtATime = 3;

QPixmap fitted(const QImage& image, QSize room, double scale) {
  const auto small = image.scaled((QSizeF(room) * scale).toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
  if (small.isNull()) return {};
  QPixmap pixmap(small.size());
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QBrush(small));
  const auto radius = Measures::thumbnailRadius * scale;
  painter.drawRoundedRect(small.rect(), radius, radius);
  painter.end();
  pixmap.setDevicePixelRatio(scale);
  return pixmap;
}

}  // namespace

VisibleThumbs::VisibleThumbs(const ThumbCache& cache, ThumbLoader& loader, QObject* parent)
    : QObject(parent), cache_(cache), loader_(loader) {
  connect(&loader_, &ThumbLoader::thumbLoaded, this, [this](const std::string& path, const QImage& image) {
    if (shown_.contains(path)) take(path, image);
  });
}

void VisibleThumbs::setRoom(QSize room, double scale) {
  if (room == room_ && scale == scale_) return;
  room_ = room;
  scale_ = scale;
  pictures_.clear();
  packed_.clear();
  // What the cache has let go meanwhile is decoded again with the next show().
  loader_.showThumbs({});
  for (const auto& path : shown_) wait(path);
  unpackSome();
}

void VisibleThumbs::show(const std::vector<ThumbLoader::Place>& places) {
  shown_.clear();
  for (const auto& place : places) {
    if (!place.isObscured) shown_.insert(place.path);
  }
  std::erase_if(pictures_, [this](const auto& entry) { return !shown_.contains(entry.first); });
  // What has just come onto the screen is where the eye is.
  const auto before = std::exchange(packed_, {});
  for (const auto& place : places) {
    if (!place.isObscured && !pictures_.contains(place.path)) wait(place.path);
  }
  const auto wasWaiting = [&](const auto& entry) {
    return std::ranges::any_of(before, [&](const auto& other) { return other.first == entry.first; });
  };
  std::ranges::stable_partition(packed_, [&](const auto& entry) { return !wasWaiting(entry); });
  loader_.showThumbs(places);
  if (!packed_.empty() && before.empty()) unpackSome();
}

const QPixmap* VisibleThumbs::picture(const std::string& path) const {
  const auto found = pictures_.find(path);
  return found == pictures_.end() ? nullptr : &found->second;
}

void VisibleThumbs::wait(const std::string& path) {
  // Taken now: by its turn the cache may have let it go.
  if (auto packed = cache_.packed(path); !packed.isNull()) packed_.emplace_back(path, std::move(packed));
}

void VisibleThumbs::timerEvent(QTimerEvent* /*event*/) { unpackSome(); }

void VisibleThumbs::unpackSome() {
  for (std::size_t i = 0; i < unpackedAtATime && !packed_.empty(); ++i) {
    const auto [path, packed] = std::move(packed_.front());
    packed_.pop_front();
    take(path, packed.image());
  }
  if (packed_.empty()) {
    unpacking_.stop();
  } else if (!unpacking_.isActive()) {
    unpacking_.start(0, this);
  }
}

void VisibleThumbs::take(const std::string& path, const QImage& image) {
  auto picture = fitted(image, room_, scale_);
  if (picture.isNull()) return;
  pictures_.insert_or_assign(path, std::move(picture));
  Q_EMIT arrived(path);
}

}  // namespace Nimbrel
