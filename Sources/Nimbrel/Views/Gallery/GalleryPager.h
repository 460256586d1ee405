#pragma once

#include "Views/Gallery/Filmstrip.h"
#include "Views/Gallery/GalleryContext.h"
#include "Views/Gallery/PageStrip.h"

#include <QWidget>

#include <optional>

namespace Nimbrel {

/// One shot in large over a filmstrip of all, both at the selected one: what the user turns to is selected, and what is
/// selected alone is turned to. When it first shows it selects the shot that it begins with.
class GalleryPager final : public QWidget {
  Q_OBJECT

 public:
  explicit GalleryPager(const GalleryContext& context, QWidget* parent = nullptr);

  /// Where each of the two is; absent while there is no shot.
  [[nodiscard]] std::optional<ShotID> galleryScrollID() const { return galleryScrollID_; }
  [[nodiscard]] std::optional<ShotID> filmstripScrollID() const { return filmstripScrollID_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void begin();
  void refresh();
  void followSelection();
  void selectGalleryShot(ShotID id);
  [[nodiscard]] std::optional<std::size_t> indexOf(ShotID id) const;

  GalleryContext context_;
  SharedShots shots_;
  PageStrip* pages_;
  Filmstrip* filmstrip_;
  std::optional<ShotID> galleryScrollID_;
  std::optional<ShotID> filmstripScrollID_;
  bool hasBegun_ = false;
};

}  // namespace Nimbrel
