#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <map>
#include <vector>

namespace Nimbrel::Testing {

/// A desktop portal on the session bus that the environment names, with no desktop behind it: it remembers what it was
/// asked and answers as it was told to. Answers need the event loop. Methods are given by their names alone.
class PortalDouble : public QDBusVirtualObject {
 public:
  struct Call {
    QString method;
    QString path;
    QVariantList arguments;

    /// The last argument, which all methods of a portal have.
    [[nodiscard]] QVariantMap options() const;
  };

  /// What a method does: it looks at the call, and answers it or does not.
  using Behaviour = std::function<void(const QDBusMessage& call)>;

  PortalDouble();
  ~PortalDouble() override;

  /// Has an interface, "Screenshot", with these properties.
  void offer(const QString& interface, const QVariantMap& properties);

  /// From now on a method makes a request whose response is this, or none as long as nobody answers.
  void answer(const QString& method, uint response, const QVariantMap& results = {});
  void keepAsking(const QString& method);
  void behave(const QString& method, Behaviour behaviour);

  /// The pieces that behaviours are made of.
  [[nodiscard]] static QString requestPath(const QDBusMessage& call, const QString& kind = QStringLiteral("request"));
  void acknowledge(const QDBusMessage& call, const QString& path);
  void respond(const QDBusMessage& call, const QString& path, uint response, const QVariantMap& results);
  void reply(const QDBusMessage& call, const QVariant& value);
  /// Tells everybody who listens at the portal's object.
  void announce(const QString& interface, const QString& signal, const QVariantList& arguments);
  void refuse(const QDBusMessage& call, const QString& error);

  /// The session at that path is over.
  void closeSession(const QString& path);

  /// All calls of that method, in order; "Close" are those of requests and sessions.
  [[nodiscard]] std::vector<Call> calls(const QString& method) const;

  /// Leaves the bus, as after a crash.
  void vanish();

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void tellProperties(const QDBusMessage& call);

  QDBusConnection connection_;
  std::map<QString, QVariantMap> interfaces_;
  std::map<QString, Behaviour> behaviours_;
  std::vector<Call> calls_;
};

}  // namespace Nimbrel::Testing
