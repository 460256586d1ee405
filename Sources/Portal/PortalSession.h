#pragma once

#include "Portal/PortalBus.h"

#include <QDBusAbstractInterface>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>

namespace Nimbrel {

/// The signals of one session, spelled as they are on the bus.
class PortalSessionSignals final : public QDBusAbstractInterface {
  Q_OBJECT

 public:
  PortalSessionSignals(const QDBusConnection& connection, const QString& owner, const QString& path, QObject* parent);

 Q_SIGNALS:
  void Closed(const QVariantMap& details);
};

/// A session that the desktop portal has made for us, until this object is gone, which ends it. Main thread.
class PortalSession final : public QObject {
  Q_OBJECT

 public:
  /// Who has ended it.
  enum class End {
    byPortal,    ///< or by the user, who was shown it
    withPortal,  ///< which is gone; another one may come
  };

  /// The path of the session that a request for one was granted.
  [[nodiscard]] static QString pathIn(const QVariantMap& results);

  /// `ended` comes once at most, in a later turn of the event loop and never once the object is gone; it may delete the
  /// object.
  PortalSession(const PortalBus& bus, const PortalInterface& interface, QString path,
                std::function<void(End end)> ended);
  ~PortalSession() override;

  [[nodiscard]] const QString& path() const { return path_; }
  /// The same as calls take it.
  [[nodiscard]] QVariant handle() const;

 private:
  void hear(End end);

  QDBusConnection connection_;
  QString owner_;
  QString path_;
  std::function<void(End end)> ended_;
  bool isOver_ = false;
  PortalSessionSignals signals_;
  QDBusServiceWatcher portalWatch_;
};

}  // namespace Nimbrel
