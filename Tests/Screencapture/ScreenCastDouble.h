#pragma once

#include "Screencapture/PipeWireDaemon.h"
#include "Screencapture/PortalDouble.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusUnixFileDescriptor>

#include <unistd.h>

#include <cstdint>
#include <utility>

namespace Nimbrel::Testing {

/// One stream of a session, as portals tell it.
struct PortalStream {
  std::uint32_t node = 0;
  QVariantMap facts;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const PortalStream& stream) {
  argument.beginStructure();
  argument << stream.node << stream.facts;
  argument.endStructure();
  return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, PortalStream& stream) {
  argument.beginStructure();
  argument >> stream.node >> stream.facts;
  argument.endStructure();
  return argument;
}

}  // namespace Nimbrel::Testing

Q_DECLARE_METATYPE(Nimbrel::Testing::PortalStream)

namespace Nimbrel::Testing {

/// Has the portal grant all that leads to a stream of this node, a monitor's, unless it is told otherwise afterwards.
class ScreenCastDouble {
 public:
  ScreenCastDouble(PortalDouble& portal, const PipeWireDaemon& pipeWire) : portal_(portal), pipeWire_(pipeWire) {
    qDBusRegisterMetaType<PortalStream>();
    qDBusRegisterMetaType<QList<PortalStream>>();
    portal_.offer(QStringLiteral("ScreenCast"), {{QStringLiteral("version"), 4U},
                                                 {QStringLiteral("AvailableSourceTypes"), 3U},
                                                 {QStringLiteral("AvailableCursorModes"), 3U}});
    portal_.behave(QStringLiteral("CreateSession"), [this](const QDBusMessage& call) {
      session_ = PortalDouble::requestPath(call, QStringLiteral("session"));
      portal_.acknowledge(call, PortalDouble::requestPath(call));
      portal_.respond(call, PortalDouble::requestPath(call), 0, {{QStringLiteral("session_handle"), session_}});
    });
    portal_.answer(QStringLiteral("SelectSources"), 0);
    show({});
    portal_.behave(QStringLiteral("OpenPipeWireRemote"), [this](const QDBusMessage& call) {
      const int remote = pipeWire_.connect();
      portal_.reply(call, QVariant::fromValue(QDBusUnixFileDescriptor(remote)));
      ::close(remote);
    });
  }

  /// The streams that are started from now on.
  void show(const QList<PortalStream>& streams) {
    portal_.answer(QStringLiteral("Start"), 0, {{QStringLiteral("streams"), QVariant::fromValue(streams)}});
  }

  void closeSession() { portal_.closeSession(session_); }

  [[nodiscard]] const QString& session() const { return session_; }

 private:
  PortalDouble& portal_;
  const PipeWireDaemon& pipeWire_;
  QString session_;
};

}  // namespace Nimbrel::Testing
