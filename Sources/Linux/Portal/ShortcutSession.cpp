#include "Linux/Portal/ShortcutSession.h"

#include <QDBusMetaType>

#include <utility>

namespace Nimbrel {

namespace {

constexpr auto shortcutsInterface = "org.freedesktop.portal.GlobalShortcuts";
/// The same at each start: by it desktops know again what the user has chosen for a program without a sandbox.
constexpr auto sessionToken = "nimbrel_hotkeys";

/// The names in the list of shortcuts that the portal says it has bound; all of ours where it does not say.
QStringList boundIDs(const QVariantMap& bound, const QList<PortalShortcut>& asked) {
  QStringList ids;
  const auto value = bound.value(QStringLiteral("shortcuts"));
  if (!value.isValid()) {
    for (const auto& shortcut : asked) ids << shortcut.id;
    return ids;
  }
  if (value.metaType() != QMetaType::fromType<QDBusArgument>()) return ids;
  const auto list = value.value<QDBusArgument>();
  if (list.currentSignature() != QLatin1String("a(sa{sv})")) return ids;
  for (const auto& shortcut : qdbus_cast<QList<PortalShortcut>>(list)) ids << shortcut.id;
  return ids;
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut) {
  argument.beginStructure();
  argument << shortcut.id << shortcut.properties;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut) {
  argument.beginStructure();
  argument >> shortcut.id >> shortcut.properties;
  argument.endStructure();
  return argument;
}

GlobalShortcutsSignals::GlobalShortcutsSignals(const QDBusConnection& connection, const QString& owner, QObject* parent)
    : QDBusAbstractInterface(owner, QLatin1String(portalPath), shortcutsInterface, connection, parent) {}

ShortcutSession::ShortcutSession(const PortalBus& bus, QList<PortalShortcut> shortcuts, Events events)
    : bus_(bus), shortcuts_(std::move(shortcuts)), events_(std::move(events)) {
  qDBusRegisterMetaType<PortalShortcut>();
  qDBusRegisterMetaType<QList<PortalShortcut>>();
  findPortalInterface(this, bus_, QLatin1String(shortcutsInterface), [this](auto found) {
    if (!found) return end(End::absent);
    interface_ = std::move(found).value();
    create();
  });
}

ShortcutSession::~ShortcutSession() = default;

void ShortcutSession::create() {
  ask({QStringLiteral("CreateSession"), {}, {{QStringLiteral("session_handle_token"), QLatin1String(sessionToken)}}},
      &ShortcutSession::bind);
}

void ShortcutSession::bind(const QVariantMap& created) {
  session_ = std::make_unique<PortalSession>(bus_, interface_, PortalSession::pathIn(created), [this](auto sessionEnd) {
    end(sessionEnd == PortalSession::End::withPortal ? End::orphaned : End::refused);
  });
  // A press may come before the answer does.
  signals_ = std::make_unique<GlobalShortcutsSignals>(bus_.connection(), interface_.owner, nullptr);
  const auto hear = [this](const QDBusObjectPath& session, const QString& shortcut) {
    if (session_ && session.path() == session_->path() && events_.activated) events_.activated(shortcut);
  };
  connect(signals_.get(), &GlobalShortcutsSignals::Activated, this, hear, Qt::QueuedConnection);
  // Without a window of ours for the portal to stand before.
  ask({QStringLiteral("BindShortcuts"), {session_->handle(), QVariant::fromValue(shortcuts_), QString()}, {}},
      &ShortcutSession::takeBound);
}

void ShortcutSession::takeBound(const QVariantMap& bound) {
  const auto ids = boundIDs(bound, shortcuts_);
  QStringList missing;
  for (const auto& shortcut : shortcuts_) {
    if (!ids.contains(shortcut.id)) missing << shortcut.id;
  }
  if (const auto leftOut = std::exchange(events_.leftOut, nullptr)) leftOut(missing);
}

void ShortcutSession::ask(PortalRequest::Call call, Next next) {
  request_ = std::make_unique<PortalRequest>(bus_, interface_, std::move(call), [this, next](const auto& answer) {
    if (answer.isGranted()) return (this->*next)(answer.results);
    end(answer.outcome == PortalAnswer::Outcome::cancelled ? End::cancelled : End::refused);
  });
}

void ShortcutSession::end(End end) {
  const auto ended = std::exchange(events_, {}).ended;
  if (!ended) return;
  // Whoever hears of it may delete this object, and with it the one whose signal we are in.
  QMetaObject::invokeMethod(
      this, [ended, end] { ended(end); }, Qt::QueuedConnection);
}

}  // namespace Nimbrel
