#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>

namespace Nimbrel::Testing {

class NotifierEar;

/// Who brings status notifiers together on the session bus that the environment names, with a host of its own that
/// shows them, unless a test says otherwise. It remembers who has entered, and asks them as a tray does. Answers need
/// the event loop. Calls wait for theirs, so they run the event loop.
class NotifierWatcherDouble final : public QDBusVirtualObject {
 public:
  enum class Host { There, Missing };

  explicit NotifierWatcherDouble(Host host = Host::There);
  ~NotifierWatcherDouble() override;

  /// The host comes, or goes.
  void setHost(Host host);

  /// Who has entered and is still on the bus.
  [[nodiscard]] QStringList items() const;
  /// Calls a method of an item's and waits for the answer; an error is one.
  QDBusMessage call(const QString& item, const QString& method, const QVariantList& arguments);
  /// A property of an item's; not valid when it has none of that name.
  [[nodiscard]] QVariant property(const QString& item, const QString& name);
  /// How often an item has said that it has another picture.
  [[nodiscard]] int newIcons() const;

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  [[nodiscard]] QDBusMessage ask(const QDBusMessage& question);

  QDBusConnection connection_;
  Host host_;
  QStringList entered_;
  NotifierEar* ear_;
};

}  // namespace Nimbrel::Testing
