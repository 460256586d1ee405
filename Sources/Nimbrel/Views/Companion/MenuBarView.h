#pragma once

#include "Platform/WindowActivation.h"
#include "Platform/WindowStacking.h"
#include "Store/Store.h"
#include "Views/Companion/RecentList.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"

#include <QElapsedTimer>
#include <QRect>
#include <QWidget>

#include <optional>
#include <string>

namespace Nimbrel {

/// The panel that drops from the icon in the menu bar: what is newest, and what takes captures. It floats above other
/// windows without a frame, and closes when the user goes elsewhere or presses Escape. What concerns processes leaves
/// as a signal. Main thread.
class MenuBarView final : public QWidget {
  Q_OBJECT

 public:
  /// What the panel works with. Borrowed, to outlive it.
  struct Context {
    Store& store;
    ThumbCache& thumbs;
    GalleryPreviewCache& previews;
    WindowStacking& stacking;
    WindowActivation& activation;
  };

  explicit MenuBarView(const Context& context);

  /// The shots it lists.
  [[nodiscard]] ShotList recent() const { return recent_->recent(); }

  /// Opens it beside its icon, on the screen where that is, and gives it the keyboard. `icon` is empty where nobody
  /// knows its place, `token` where the desktop gave none. When its screen is taken away it goes to another.
  void openAt(const QRect& icon, const std::string& token = {});
  /// The same, but closes it while it is open, or was closed by the same click.
  void toggleAt(const QRect& icon, const std::string& token = {});

 Q_SIGNALS:
  void openMainAppRequested();
  /// The tools of the last recording are to be in front.
  void recordingToolsRequested();
  void quitRequested();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void addSections();
  void settle(const QRect& icon);
  void comeBack();
  void fit();
  void leave();

  Context context_;
  RecentList* recent_;
  std::optional<QRect> anchor_;  ///< what it is open beside
  std::size_t screen_ = 0;
  QElapsedTimer left_;  ///< since it was closed because the user went elsewhere
};

}  // namespace Nimbrel
