#pragma once

#include <QDBusConnection>
#include <QString>

namespace Nimbrel {

/// A connection of our own to the session bus, closed with this object. Main thread.
class BusConnection {
 public:
  /// Waits for the bus to greet us, and for nothing else.
  BusConnection();
  ~BusConnection();
  BusConnection(const BusConnection&) = delete;
  BusConnection& operator=(const BusConnection&) = delete;

  /// Whether there is a bus that has greeted us and has not gone since.
  [[nodiscard]] bool isOpen() const;
  [[nodiscard]] QDBusConnection get() const { return QDBusConnection(name_); }

 private:
  QString name_;  ///< by which Qt knows it
};

}  // namespace Nimbrel
