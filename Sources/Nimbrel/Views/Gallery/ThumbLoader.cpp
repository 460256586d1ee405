#include "Views/Gallery/ThumbLoader.h"

#include "Platform/Process.h"

#include <utility>

namespace Nimbrel {

namespace {

constexpr int thumbThreads = 2;
constexpr int previewThreads = 1;

std::vector<std::string> openPaths(const std::vector<ThumbLoader::Place>& places) {
  std::vector<std::string> paths;
  for (const auto& place : places) {
    if (!place.isObscured) paths.push_back(place.path);
  }
  return paths;
}

}  // namespace

ThumbLoader::ThumbLoader(ThumbCache& thumbs, GalleryPreviewCache& previews, const Decoder& decoder, QObject* parent)
    : QObject(parent),
      thumbs_(thumbs),
      previews_(previews),
      thumbQueue_(
          thumbThreads,
          [decoder](const std::string& path) -> Thumb {
            Process::lowerThreadPriority();
            auto image = decoder(path, thumbSide);
            // Packed here, where it holds nobody up.
            CompactImage compact(image);
            return {.image = std::move(image), .compact = std::move(compact)};
          },
          [this](const std::string& path, Thumb thumb) { takeThumb(path, std::move(thumb)); }),
      previewQueue_(
          previewThreads, [decoder](const std::string& path) { return decoder(path, previewSide); },
          [this](const std::string& path, const QImage& image) { takePreview(path, image); }) {}

ThumbLoader::~ThumbLoader() = default;

void ThumbLoader::showThumbs(const std::vector<Place>& places) {
  thumbQueue_.show(openPaths(places), [this](const std::string& path) { return thumbs_.holds(path); });
}

void ThumbLoader::showPreviews(const std::vector<Place>& places) {
  previewQueue_.show(openPaths(places), [this](const std::string& path) { return previews_.holds(path); });
}

void ThumbLoader::takeThumb(const std::string& path, Thumb thumb) {
  if (thumb.compact.isNull()) return;
  thumbs_.store(std::move(thumb.compact), path);
  Q_EMIT thumbLoaded(path, thumb.image);
}

void ThumbLoader::takePreview(const std::string& path, const QImage& image) {
  if (image.isNull() || !previewQueue_.isShown(path)) return;
  previews_.store(image, path);
  Q_EMIT previewLoaded(path, image);
}

}  // namespace Nimbrel
