#pragma once

#include "Portal/PortalRequest.h"
#include "Portal/PortalSession.h"

#include <QDBusAbstractInterface>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace Nimbrel {

/// A shortcut as calls to the portal have it: its name within the session, and what the user is told of it.
struct PortalShortcut {
  QString id;
  QVariantMap properties;  ///< "description", and the "preferred_trigger"
};
QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut);

/// The signals of the portal for shortcuts, spelled as they are on the bus.
class GlobalShortcutsSignals final : public QDBusAbstractInterface {
  Q_OBJECT

 public:
  GlobalShortcutsSignals(const QDBusConnection& connection, const QString& owner, QObject* parent);

 Q_SIGNALS:
  void Activated(const QDBusObjectPath& session, const QString& shortcut, qulonglong timestamp,
                 const QVariantMap& options);
};

/// Shortcuts that the desktop portal listens for (org.freedesktop.portal.GlobalShortcuts), until this object is gone.
/// It may ask the user about them, and the user may choose other keys. Main thread.
class ShortcutSession final : public QObject {
  Q_OBJECT

 public:
  /// Why there is no session, or no more.
  enum class End {
    absent,     ///< the desktop has no such portal
    cancelled,  ///< by the user
    refused,    ///< by the portal, now or later
    orphaned,   ///< the portal itself is gone
  };

  /// Each comes in a later turn of the event loop and never once the object is gone. It may delete the object.
  struct Events {
    std::function<void(const QString& id)> activated;
    /// Once, when it is known which of the shortcuts are listened for: those left out are here.
    std::function<void(const QStringList& ids)> leftOut;
    /// Once at most; nothing follows it.
    std::function<void(End end)> ended;
  };

  /// Asks for them. The bus must outlive the object.
  ShortcutSession(const PortalBus& bus, QList<PortalShortcut> shortcuts, Events events);
  ~ShortcutSession() override;

 private:
  void create();
  void bind(const QVariantMap& created);
  void takeBound(const QVariantMap& bound);
  using Next = void (ShortcutSession::*)(const QVariantMap& results);
  void ask(PortalRequest::Call call, Next next);
  void end(End end);

  const PortalBus& bus_;
  QList<PortalShortcut> shortcuts_;
  Events events_;
  PortalInterface interface_;
  std::unique_ptr<GlobalShortcutsSignals> signals_;
  std::unique_ptr<PortalSession> session_;
  std::unique_ptr<PortalRequest> request_;  ///< goes first, and takes its question off the screen
};

}  // namespace Nimbrel
