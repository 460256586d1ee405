#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"
#include "Views/Gallery/GalleryContext.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/GalleryShots.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Shared/AppIcons.h"

#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// The shots of the filter and the search, in the layout of the settings, or a word on why there are none. Connect to
/// `actions()` what other windows do. Main thread.
class GalleryView final : public QWidget {
  Q_OBJECT

 public:
  /// All are borrowed and must outlive the view.
  struct Parts {
    Store& store;
    AppIcons& icons;
    ThumbCache& thumbs;
    GalleryPreviewCache& previews;
  };
  /// `decoder` is what pictures are decoded with.
  explicit GalleryView(const Parts& parts, QWidget* parent = nullptr,
                       const ThumbLoader::Decoder& decoder = &ShotFile::thumbnail);
  ~GalleryView() override;

  [[nodiscard]] GalleryActions& actions() { return actions_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  enum class Shown { Nothing, Empty, Grid, Pager };
  void choose();
  [[nodiscard]] Shown wanted();
  [[nodiscard]] QWidget* made(Shown shown);

  Store& store_;
  ThumbLoader loader_;
  GalleryShots shots_;
  GalleryActions actions_;
  GalleryContext context_;
  QVBoxLayout* column_;
  Shown shown_ = Shown::Nothing;
  QWidget* content_ = nullptr;
};

}  // namespace Nimbrel
