#include "Linux/Desktop/BusConnection.h"

#include "Portal/SessionBus.h"

#include <QUuid>

namespace Nimbrel {

BusConnection::BusConnection() : name_(QUuid::createUuid().toString(QUuid::WithoutBraces)) {
  const auto address = SessionBus::address();
  if (!address.empty()) QDBusConnection::connectToBus(QString::fromStdString(address), name_);
}

BusConnection::~BusConnection() { QDBusConnection::disconnectFromBus(name_); }

bool BusConnection::isOpen() const { return get().isConnected(); }

}  // namespace Nimbrel
