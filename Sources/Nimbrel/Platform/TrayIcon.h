#pragma once

#include <QIcon>
#include <QRect>
#include <QString>

#include <functional>
#include <string>

namespace Nimbrel {

/// An icon of ours among those that the desktop shows for programs in the background. Trays come and go while we run:
/// the icon is there whenever it is visible and there is a tray. Main thread only.
class TrayIcon {
 public:
  /// The user has chosen the icon.
  struct Activation {
    QRect place;        ///< where it is on the desktop, in device-independent pixels; empty where the tray does not say
    std::string token;  ///< what the desktop gave for a window to come to the front; may be empty
  };
  using Activated = std::function<void(const Activation& activation)>;
  using HostChanged = std::function<void(bool isThere)>;

  virtual ~TrayIcon() = default;

  /// What is shown from now on; the title is for people, and for those who cannot see the picture.
  virtual void setLook(const QIcon& picture, const QString& title) = 0;

  /// Not visible before it is told to be.
  virtual void setVisible(bool visible) = 0;

  /// Who hears from now on that the user has chosen the icon, by whichever button. An empty one ends it.
  virtual void onActivated(Activated activated) = 0;

  /// Calls it, in a later turn of the event loop, as soon as it is known whether the desktop has a tray, and at each
  /// change from then on. Also while the icon is not visible. An empty one ends it.
  virtual void observeHost(HostChanged changed) = 0;
};

/// Where nothing is known of trays.
class NullTrayIcon final : public TrayIcon {
 public:
  void setLook(const QIcon&, const QString&) override {}
  void setVisible(bool) override {}
  void onActivated(Activated) override {}
  void observeHost(HostChanged) override {}
};

}  // namespace Nimbrel
