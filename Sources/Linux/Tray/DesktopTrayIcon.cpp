#include "Linux/Factory.h"
#include "Linux/Tray/NotifierHost.h"
#include "Linux/Tray/NotifierItem.h"
#include "Linux/Tray/TrayPlaces.h"
#include "Linux/Tray/X11TrayHost.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSystemTrayIcon>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

std::vector<TrayScreen> screens() {
  std::vector<TrayScreen> result;
  for (const auto* screen : QGuiApplication::screens())
    result.push_back({screen->geometry(), screen->devicePixelRatio()});
  return result;
}

/// A status notifier wherever there is a host for those, which most desktops are; else a window in the tray of the X
/// server. Qt would decide between the two once and for all, and does not tell where a status notifier is.
class DesktopTrayIcon final : public QObject, public TrayIcon {
  Q_OBJECT

 public:
  DesktopTrayIcon() {
    connect(&notifiers_, &NotifierHost::changed, this, &DesktopTrayIcon::follow);
    // Elsewhere windows cannot enter the tray of an X server, even if there is one.
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return;
    windows_ = std::make_unique<X11TrayHost>();
    connect(windows_.get(), &X11TrayHost::changed, this, &DesktopTrayIcon::follow);
  }

  void setLook(const QIcon& picture, const QString& title) override {
    picture_ = picture;
    title_ = title;
    if (item_) item_->setLook(picture_, title_);
    if (window_) dress();
  }

  void setVisible(bool visible) override {
    isVisible_ = visible;
    place();
  }

  void onActivated(Activated activated) override { activated_ = std::move(activated); }

  void observeHost(HostChanged changed) override {
    hostChanged_ = std::move(changed);
    told_.reset();
    QMetaObject::invokeMethod(this, &DesktopTrayIcon::tell, Qt::QueuedConnection);
  }

 private:
  void follow() {
    place();
    tell();
  }

  [[nodiscard]] bool hasNotifiers() const { return notifiers_.isThere().value_or(false); }
  [[nodiscard]] bool hasWindows() const { return windows_ && windows_->isThere(); }

  /// The icon where it is to be, and nowhere else.
  void place() {
    if (!isVisible_ || !hasNotifiers()) item_.reset();
    if (!isVisible_ || hasNotifiers() || !hasWindows()) window_.reset();
    // Until it is known whether there is a better place, the icon would only move.
    if (!isVisible_ || !notifiers_.isThere()) return;
    if (hasNotifiers() && !item_) {
      item_ = std::make_unique<NotifierItem>(picture_, title_, [this](QPoint pixel, const std::string& token) {
        activate({.place = placeOfPixel(pixel, screens()), .token = token});
      });
    } else if (!hasNotifiers() && hasWindows() && !window_) {
      window_ = std::make_unique<QSystemTrayIcon>();
      connect(window_.get(), &QSystemTrayIcon::activated, this, &DesktopTrayIcon::takeClick);
      dress();
      window_->show();
    }
  }

  void dress() {
    window_->setIcon(picture_);
    window_->setToolTip(title_);
  }

  void takeClick(QSystemTrayIcon::ActivationReason reason) {
    // Its first click was told already.
    if (reason == QSystemTrayIcon::DoubleClick) return;
    activate({.place = window_->geometry(), .token = {}});
  }

  void activate(const Activation& activation) {
    if (activated_) activated_(activation);
  }

  void tell() {
    if (!notifiers_.isThere() || !hostChanged_) return;
    const bool isThere = hasNotifiers() || hasWindows();
    if (std::exchange(told_, isThere) != isThere) hostChanged_(isThere);
  }

  NotifierHost notifiers_;
  std::unique_ptr<X11TrayHost> windows_;
  QIcon picture_;
  QString title_;
  bool isVisible_ = false;
  std::optional<bool> told_;
  Activated activated_;
  HostChanged hostChanged_;
  std::unique_ptr<NotifierItem> item_;
  std::unique_ptr<QSystemTrayIcon> window_;
};

}  // namespace

std::unique_ptr<TrayIcon> makeTrayIcon() { return std::make_unique<DesktopTrayIcon>(); }

}  // namespace Nimbrel

#include "DesktopTrayIcon.moc"
