#pragma once

#include "Platform/TrayIcon.h"
#include "Store/Store.h"

#include <QObject>
#include <QTimer>

#include <chrono>

namespace Nimbrel {

/// Tells the user, in one line of the status and of the log, that the desktop has no tray for the icon that the
/// settings ask for, and what there is instead. Once in the life of a process, and not over another message. When a
/// session begins trays come some time after us, so nothing is said before none has come for a while. Main thread.
class TrayNotice final : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::seconds usualPatience{10};

  /// Both must outlive it. It becomes the one that observes the tray's host.
  TrayNotice(Store& store, TrayIcon& tray, std::chrono::milliseconds patience = usualPatience);
  ~TrayNotice() override;
  TrayNotice(const TrayNotice&) = delete;
  TrayNotice& operator=(const TrayNotice&) = delete;

 private:
  void take(bool isThere);
  void say();

  Store& store_;
  TrayIcon& tray_;
  QTimer waiting_;  ///< while there is no tray
};

}  // namespace Nimbrel
