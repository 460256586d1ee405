#pragma once

#include "Model/ShotFile.h"
#include "Platform/WindowStacking.h"
#include "Store/Store.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Pins/PinnedView.h"

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QScreen>
#include <QThreadPool>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <stop_token>
#include <string>

namespace Nimbrel {

/// The shots that are pinned to the screen, each in a window of its own, until the process ends. Pins of shots that are
/// protected close by themselves. Needs a QApplication. Main thread; pictures are decoded in others.
class PinBoard final : public QObject {
  Q_OBJECT

 public:
  /// The picture of a file, its longer side so many pixels at most; null when it cannot be read. Called in other
  /// threads.
  using Decoder = std::function<QImage(const std::string& path, int maxPixel)>;

  /// Store, cache and stacking are borrowed and must outlive the board.
  PinBoard(Store& store, GalleryPreviewCache& previews, WindowStacking& stacking,
           Decoder decoder = &ShotFile::thumbnail);
  ~PinBoard() override;

  /// Pins a shot to the screen where the user works: at once where the gallery has its picture, else when that is
  /// decoded. A shot that is pinned comes to the front instead; one that cannot be read is not pinned, without a word.
  /// Whoever pins a shot has asked for access to it.
  void pin(const ShotPtr& asked);
  /// Nothing happens when the shot is not pinned.
  void unpin(ShotID id);
  void unpinAll();

  /// While a picture of the screen is taken, or for good at the end: what is pinned meanwhile opens when this is over.
  void setHeldBack(bool isHeldBack);

  /// The windows on the screen.
  [[nodiscard]] std::size_t count() const;
  /// Null while the shot has none.
  [[nodiscard]] PinnedView* window(ShotID id) const;

 private:
  struct Pin {
    ShotPtr shot;                      ///< as it was when it was pinned
    QPointer<QScreen> screen;          ///< where the user worked at that time
    std::unique_ptr<PinnedView> view;  ///< null until its picture is decoded
    QImage waiting;                    ///< the picture, while no window may open
  };

  void decode(const ShotPtr& shot);
  void take(const ShotPtr& shot, const QImage& picture);
  void show(Pin& pin, const QImage& picture);
  void sayWhatCannotBe();
  void openFile(const ShotPtr& shot);
  void close(Pin pin);
  using Condition = std::function<bool(const Shot& shot)>;
  /// Closes those of which it holds, as they are in the catalogue now, or were if they are gone from it.
  void closeThose(const Condition& isToClose);
  void closeSensitive();
  void closeProtected();

  Store& store_;
  GalleryPreviewCache& previews_;
  WindowStacking& stacking_;
  Decoder decoder_;
  std::map<ShotID, Pin> pins_;
  bool hasSaidWhatCannotBe_ = false;
  bool isHeldBack_ = false;
  std::stop_source stop_;  ///< of the decoding for what is pinned now
  QThreadPool threads_;
};

}  // namespace Nimbrel
