#pragma once

#include "Model/ShotFile.h"
#include "Views/Gallery/CompactImage.h"
#include "Views/Gallery/DecodeQueue.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"

#include <QImage>
#include <QObject>

#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

/// Decodes the pictures that come onto the screen and keeps them in the two caches: thumbnails in two threads that
/// yield to everything else, previews in one of usual priority, so that the shot in front wins. A file that cannot be
/// decoded gives nothing and is tried again when it next appears. Main thread.
class ThumbLoader : public QObject {
  Q_OBJECT
 public:
  static constexpr int thumbSide = 640;     ///< pixels, the longer side
  static constexpr int previewSide = 1600;  ///< pixels, the longer side

  /// Null when the file cannot be decoded. Called in other threads.
  using Decoder = std::function<QImage(const std::string& path, int maxPixel)>;

  /// The caches are borrowed and must outlive the loader.
  ThumbLoader(ThumbCache& thumbs, GalleryPreviewCache& previews, const Decoder& decoder = &ShotFile::thumbnail,
              QObject* parent = nullptr);
  /// Waits for the pictures at hand.
  ~ThumbLoader() override;

  /// A place on the screen for a picture of a file. While it is obscured the file is not looked at.
  struct Place {
    std::string path;
    bool isObscured = false;
  };
  /// The thumbnails on the screen from now on, from the top. Those not yet cached come with thumbLoaded().
  void showThumbs(const std::vector<Place>& places);
  /// The same for previews and previewLoaded(). What left the screen while it was decoded is dropped, other than with
  /// thumbnails, which are cached all the same.
  void showPreviews(const std::vector<Place>& places);

 Q_SIGNALS:
  void thumbLoaded(const std::string& path, const QImage& image);
  /// The image may be too large for the cache, and is to be shown all the same.
  void previewLoaded(const std::string& path, const QImage& image);

 private:
  struct Thumb {
    QImage image;
    CompactImage compact;
  };
  void takeThumb(const std::string& path, Thumb thumb);
  void takePreview(const std::string& path, const QImage& image);

  ThumbCache& thumbs_;
  GalleryPreviewCache& previews_;
  DecodeQueue<Thumb> thumbQueue_;
  DecodeQueue<QImage> previewQueue_;
};

}  // namespace Nimbrel
