#include "Linux/Tray/NotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace Nimbrel {

namespace {

constexpr int longestAnswerMilliseconds = 5'000;

}  // namespace

QString NotifierNames::watcher() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }
QString NotifierNames::watcherPath() { return QStringLiteral("/StatusNotifierWatcher"); }

NotifierHost::NotifierHost() {
  if (bus_.isOpen()) {
    listen();
    ask();
  } else {
    QMetaObject::invokeMethod(
        this, [this] { become(false); }, Qt::QueuedConnection);
  }
}

void NotifierHost::listen() {
  auto connection = bus_.get();
  for (const auto* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
    // The bus knows its receivers by text alone.
    connection.connect(NotifierNames::watcher(), NotifierNames::watcherPath(), NotifierNames::watcher(),
                       QLatin1String(signal), this, "1ask()");
  }
  auto* watcher =
      new QDBusServiceWatcher(NotifierNames::watcher(), connection, QDBusServiceWatcher::WatchForOwnerChange, this);
  connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString& before, const QString&) {
            if (!before.isEmpty()) become(false);
            ask();
          });
}

void NotifierHost::ask() {
  auto call = QDBusMessage::createMethodCall(NotifierNames::watcher(), NotifierNames::watcherPath(),
                                             QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  call.setAutoStartService(false);
  call << NotifierNames::watcher() << QStringLiteral("IsStatusNotifierHostRegistered");
  auto* question = new QDBusPendingCallWatcher(bus_.get().asyncCall(call, longestAnswerMilliseconds), this);
  question_ = question;
  connect(question, &QDBusPendingCallWatcher::finished, this, [this, question] {
    question->deleteLater();
    if (question != question_) return;
    const QDBusPendingReply<QDBusVariant> reply = *question;
    become(!reply.isError() && reply.value().variant().toBool());
  });
}

void NotifierHost::become(bool isThere) {
  if (isThere_ == isThere) return;
  isThere_ = isThere;
  Q_EMIT changed();
}

}  // namespace Nimbrel
