#include "Screencapture/PortalScreenCast.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUuid>

#include <utility>

namespace Nimbrel::Screencapture {

namespace {

// Bits and values of the portal.
enum SourceType : unsigned { Monitor = 1, Window = 2 };
enum CursorMode : unsigned { Embedded = 2 };

/// The kinds of things we let the user choose from; 0 when the portal shows none of them.
unsigned wantedSources(CaptureRequest::Subject subject, const PortalInterface& interface) {
  const unsigned wanted = subject == CaptureRequest::Subject::mainScreen ? Monitor : Monitor | Window;
  return wanted & interface.properties.value(QStringLiteral("AvailableSourceTypes"), unsigned{Monitor}).toUInt();
}

bool canShowPointer(const PortalInterface& interface) {
  return (interface.properties.value(QStringLiteral("AvailableCursorModes")).toUInt() & Embedded) != 0;
}

std::string kindOf(unsigned sourceType) {
  switch (sourceType) {
    case Monitor:
      return "display";
    case Window:
      return "window";
    default:
      return "selection";
  }
}

/// Two numbers of a stream's facts.
template <class Pair>
Pair pairIn(const QVariantMap& facts, const QString& name) {
  const auto value = facts.value(name);
  if (value.metaType() != QMetaType::fromType<QDBusArgument>()) return {};
  const auto numbers = value.value<QDBusArgument>();
  return numbers.currentSignature() == QLatin1String("(ii)") ? qdbus_cast<Pair>(numbers) : Pair();
}

/// Only monitors have a place.
QRect areaIn(const QVariantMap& facts) {
  const auto position = QStringLiteral("position");
  if (!facts.contains(position)) return {};
  return {pairIn<QPoint>(facts, position), pairIn<QSize>(facts, QStringLiteral("size"))};
}

/// The first stream that the user has started; absent when there is none.
std::optional<ScreenCastStream> firstStream(const QVariantMap& started) {
  const auto value = started.value(QStringLiteral("streams"));
  if (value.metaType() != QMetaType::fromType<QDBusArgument>()) return std::nullopt;
  const auto streams = value.value<QDBusArgument>();
  if (streams.currentSignature() != QLatin1String("a(ua{sv})")) return std::nullopt;
  ScreenCastStream stream;
  QVariantMap facts;
  streams.beginArray();
  const bool hasStream = !streams.atEnd();
  if (hasStream) {
    streams.beginStructure();
    streams >> stream.node >> facts;
    streams.endStructure();
  }
  // What is begun and not ended is never freed.
  streams.endArray();
  if (!hasStream) return std::nullopt;
  stream.kind = kindOf(facts.value(QStringLiteral("source_type")).toUInt());
  stream.area = areaIn(facts);
  return stream;
}

}  // namespace

PortalScreenCast::PortalScreenCast(const PortalBus& bus, CaptureRequest::Subject subject, Events events)
    : bus_(bus), subject_(subject), events_(std::move(events)) {
  findPortalInterface(this, bus_, QStringLiteral("org.freedesktop.portal.ScreenCast"), [this](auto found) {
    if (!found) return refuse(found.error().message);
    interface_ = std::move(found).value();
    if (wantedSources(subject_, interface_) == 0) return refuse("The desktop portal shows neither screens nor windows");
    createSession();
  });
}

PortalScreenCast::~PortalScreenCast() = default;

void PortalScreenCast::createSession() {
  const auto token = QStringLiteral("nimbrel_") + QUuid::createUuid().toString(QUuid::Id128);
  ask({QStringLiteral("CreateSession"), {}, {{QStringLiteral("session_handle_token"), token}}},
      &PortalScreenCast::selectSources);
}

void PortalScreenCast::selectSources(const QVariantMap& session) {
  session_ = std::make_unique<PortalSession>(bus_, interface_, PortalSession::pathIn(session),
                                             [this](PortalSession::End) { hearClosed(); });
  QVariantMap options{{QStringLiteral("types"), wantedSources(subject_, interface_)},
                      {QStringLiteral("multiple"), false}};
  if (canShowPointer(interface_)) options.insert(QStringLiteral("cursor_mode"), unsigned{Embedded});
  ask({QStringLiteral("SelectSources"), {session_->handle()}, options}, &PortalScreenCast::startStream);
}

void PortalScreenCast::startStream(const QVariantMap&) {
  // Without a window of ours for the portal to stand before.
  ask({QStringLiteral("Start"), {session_->handle(), QString()}, {}}, &PortalScreenCast::openRemote);
}

void PortalScreenCast::openRemote(const QVariantMap& started) {
  const auto stream = firstStream(started);
  if (!stream) return refuse("The desktop portal shows nothing");
  auto call = QDBusMessage::createMethodCall(interface_.owner, QLatin1String(portalPath), interface_.name,
                                             QStringLiteral("OpenPipeWireRemote"));
  call << session_->handle() << QVariantMap();
  auto* watcher = new QDBusPendingCallWatcher(bus_.connection().asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, stream = *stream] {
    watcher->deleteLater();
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
    if (reply.isError()) return refuse("The desktop portal refused: " + reply.error().message().toStdString());
    takeRemote(reply.value(), stream);
  });
}

void PortalScreenCast::takeRemote(const QDBusUnixFileDescriptor& remote, ScreenCastStream stream) {
  stream.remote = remote;
  answer({PortalAnswer::Outcome::granted, std::move(stream), {}});
}

void PortalScreenCast::ask(PortalRequest::Call call, Next next) {
  request_ = std::make_unique<PortalRequest>(bus_, interface_, std::move(call), [this, next](const auto& reply) {
    if (reply.isGranted()) return (this->*next)(reply.results);
    answer({reply.outcome, std::nullopt, reply.reason});
  });
}

void PortalScreenCast::hearClosed() {
  session_.reset();
  request_.reset();
  if (events_.answered) return refuse("The desktop portal has closed the session");
  if (const auto closed = std::exchange(events_.closed, nullptr)) closed();
}

void PortalScreenCast::refuse(const std::string& reason) {
  answer({PortalAnswer::Outcome::refused, std::nullopt, reason});
}

void PortalScreenCast::answer(const ScreenCastAnswer& answer) {
  if (const auto answered = std::exchange(events_.answered, nullptr)) answered(answer);
}

}  // namespace Nimbrel::Screencapture
