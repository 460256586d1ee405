#pragma once

#include "Platform/TrayIcon.h"

#include <utility>

namespace Nimbrel::Testing {

/// A tray whose icon is clicked when a test says so.
class FakeTrayIcon final : public TrayIcon {
 public:
  void setLook(const QIcon& picture, const QString& newTitle) override {
    look = picture;
    title = newTitle;
    ++looks;
  }
  void setVisible(bool visible) override { isVisible = visible; }
  void onActivated(Activated activated) override { activated_ = std::move(activated); }
  void observeHost(HostChanged changed) override { hostChanged_ = std::move(changed); }

  void activate(const Activation& activation) const {
    if (activated_) activated_(activation);
  }
  void tellHost(bool isThere) const {
    if (hostChanged_) hostChanged_(isThere);
  }
  [[nodiscard]] bool isObserved() const { return hostChanged_ != nullptr; }

  QIcon look;
  QString title;
  int looks = 0;
  bool isVisible = false;

 private:
  Activated activated_;
  HostChanged hostChanged_;
};

}  // namespace Nimbrel::Testing
