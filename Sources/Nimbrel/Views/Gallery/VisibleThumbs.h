#pragma once

#include "Views/Gallery/CompactImage.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"

#include <QBasicTimer>
#include <QObject>
#include <QPixmap>

#include <deque>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Nimbrel {

/// The thumbnails of what is on the screen, in the size they are painted in. Those that are cached are unpacked a few
/// at a time, so that no frame waits for a screen full of them; all others come from the loader. A picture stays for as
/// long as its file is on the screen, whatever happens to the list around it. Main thread.
class VisibleThumbs final : public QObject {
  Q_OBJECT

 public:
  /// Both are borrowed and must outlive the object. Of several on one loader only one may show anything at a time.
  VisibleThumbs(const ThumbCache& cache, ThumbLoader& loader, QObject* parent);

  /// The room for a picture in device-independent pixels, and the scale of the screen. Follow it with show().
  void setRoom(QSize room, double scale);
  /// What is on the screen from now on, from the top.
  void show(const std::vector<ThumbLoader::Place>& places);
  /// Null while there is none. Valid until the next call of any other function.
  [[nodiscard]] const QPixmap* picture(const std::string& path) const;

 Q_SIGNALS:
  /// There is a picture now.
  void arrived(const std::string& path);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void wait(const std::string& path);
  void unpackSome();
  void take(const std::string& path, const QImage& image);

  const ThumbCache& cache_;
  ThumbLoader& loader_;
  QSize room_;
  double scale_ = 1;
  std::unordered_set<std::string> shown_;
  std::unordered_map<std::string, QPixmap> pictures_;
  std::deque<std::pair<std::string, CompactImage>> packed_;  ///< still to be unpacked
  QBasicTimer unpacking_;
};

}  // namespace Nimbrel
