#pragma once

#include "Screencapture/CaptureRequest.h"

#include "Portal/PortalRequest.h"
#include "Portal/PortalSession.h"

#include <QDBusUnixFileDescriptor>
#include <QRect>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel::Screencapture {

/// What the user has let us see: one node of PipeWire, and the connection to it.
struct ScreenCastStream {
  QDBusUnixFileDescriptor remote;
  std::uint32_t node = 0;
  std::string kind;  ///< "display" or "window"; "selection" when the portal does not say
  QRect area;        ///< of the screens that it shows; empty when the portal does not say
};

/// How the conversation about it ended.
struct ScreenCastAnswer {
  PortalAnswer::Outcome outcome = PortalAnswer::Outcome::refused;
  std::optional<ScreenCastStream> stream;  ///< when it was granted
  std::string reason;                      ///< of a refusal
};

/// A session with the desktop portal in which the user shows us a screen or a window, from its beginning until this
/// object is gone, which ends it. Main thread.
class PortalScreenCast final : public QObject {
  Q_OBJECT

 public:
  /// Each comes in a later turn of the event loop and never once the object is gone. It may delete the object.
  struct Events {
    std::function<void(const ScreenCastAnswer& answer)> answered;  ///< once
    std::function<void()> closed;  ///< once at most, after what was granted: the desktop shows nothing any more
  };

  /// Asks for the main screen, or for a screen or window where there is something to be selected; the user chooses. The
  /// bus must outlive the object.
  PortalScreenCast(const PortalBus& bus, CaptureRequest::Subject subject, Events events);
  ~PortalScreenCast() override;

 private:
  using Next = void (PortalScreenCast::*)(const QVariantMap& results);

  void createSession();
  void selectSources(const QVariantMap& session);
  void startStream(const QVariantMap& nothing);
  void openRemote(const QVariantMap& started);
  void takeRemote(const QDBusUnixFileDescriptor& remote, ScreenCastStream stream);
  void ask(PortalRequest::Call call, Next next);
  void hearClosed();
  void refuse(const std::string& reason);
  void answer(const ScreenCastAnswer& answer);

  const PortalBus& bus_;
  CaptureRequest::Subject subject_;
  Events events_;
  PortalInterface interface_;
  std::unique_ptr<PortalSession> session_;  ///< null while there is none
  std::unique_ptr<PortalRequest> request_;  ///< goes first, and takes its question off the screen
};

}  // namespace Nimbrel::Screencapture
