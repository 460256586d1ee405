#pragma once

#include "Portal/PortalBus.h"

#include <QDBusAbstractInterface>
#include <QDBusError>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <string>

namespace Nimbrel {

/// How a request to the portal ended.
struct PortalAnswer {
  enum class Outcome {
    granted,
    cancelled,  ///< by the user
    refused,    ///< by the portal, or it is gone
  };

  Outcome outcome = Outcome::refused;
  QVariantMap results;  ///< of what was granted
  std::string reason;   ///< of a refusal

  [[nodiscard]] bool isGranted() const { return outcome == Outcome::granted; }
};

/// The signals of one request, spelled as they are on the bus.
class PortalRequestSignals final : public QDBusAbstractInterface {
  Q_OBJECT

 public:
  PortalRequestSignals(const QDBusConnection& connection, const QString& owner, const QString& path, QObject* parent);

 Q_SIGNALS:
  void Response(uint response, const QVariantMap& results);
};

/// One request to the desktop portal, which may ask the user for as long as the user likes. Closed with this object,
/// so that no question stays on the screen that nobody waits for. Main thread.
class PortalRequest final : public QObject {
  Q_OBJECT

 public:
  struct Call {
    QString method;
    QVariantList arguments;  ///< before the options
    QVariantMap options;     ///< without the handle's token
  };
  using Then = std::function<void(const PortalAnswer& answer)>;

  /// Sends the call. `then` comes once, in a later turn of the event loop, and never once this object is gone; it may
  /// delete the object. The bus must outlive it.
  PortalRequest(const PortalBus& bus, const PortalInterface& interface, Call call, Then then);
  ~PortalRequest() override;

 private:
  void listen(const QString& path);
  void send(const PortalInterface& interface, Call call);
  void hear(uint response, const QVariantMap& results);
  void takeHandle(const QString& path);
  void refuse(const std::string& reason);
  void end(const PortalAnswer& answer);

  QDBusConnection connection_;
  QString owner_;
  QString path_;   ///< where the request is
  QString token_;  ///< the last part of its path, as we wish it
  Then then_;
  bool isAnswered_ = false;
  QDBusServiceWatcher portalWatch_;
  QTimer busWatch_;
};

}  // namespace Nimbrel
