#include "Linux/Instance/ApplicationObject.h"

#include "Linux/Desktop/FileUri.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QVariantMap>

#include <optional>
#include <utility>

namespace Nimbrel {

namespace {

const auto applicationInterface = QStringLiteral("org.freedesktop.Application");
const auto otherCatalogueError = QStringLiteral("org.freedesktop.Application.Error.OtherCatalogue");
const auto catalogueKey = QStringLiteral("nimbrel-catalogue");
const auto tokenKey = QStringLiteral("activation-token");
const auto startupKey = QStringLiteral("desktop-startup-id");

QString addressOf(const std::string& folder) { return QString::fromStdString(fileUri(folder)); }

QVariantMap platformData(const QDBusMessage& message) {
  return qdbus_cast<QVariantMap>(message.arguments().constLast());
}

StartRequest requestToOpen(const QStringList& addresses) {
  StartRequest request{.kind = StartRequest::Kind::Open};
  for (const auto& address : addresses) {
    if (auto path = fileOfUri(address.toStdString()); !path.empty()) request.files.push_back(std::move(path));
  }
  return request;
}

/// Without its token; absent for what is no call of ours.
std::optional<StartRequest> requestOf(const QDBusMessage& message) {
  const auto member = message.member();
  const auto signature = message.signature();
  if (member == QLatin1String("Activate") && signature == QLatin1String("a{sv}")) return StartRequest();
  if (member == QLatin1String("Open") && signature == QLatin1String("asa{sv}")) {
    return requestToOpen(message.arguments().constFirst().toStringList());
  }
  if (member != QLatin1String("ActivateAction") || signature != QLatin1String("sava{sv}")) return std::nullopt;
  return StartRequest{.kind = StartRequest::Kind::Action,
                      .action = message.arguments().constFirst().toString().toStdString()};
}

QVariantMap platformDataFor(const std::string& catalogueFolder, const StartRequest& request) {
  QVariantMap data{{catalogueKey, addressOf(catalogueFolder)}};
  if (request.activationToken.empty()) return data;
  const auto token = QString::fromStdString(request.activationToken);
  data.insert(tokenKey, token);
  data.insert(startupKey, token);
  return data;
}

}  // namespace

ApplicationObject::ApplicationObject(const std::string& catalogueFolder, SingleInstance::Handler onRequest)
    : catalogue_(addressOf(catalogueFolder)), onRequest_(std::move(onRequest)) {}

QString ApplicationObject::pathOf(const std::string& identifier) {
  auto path = QLatin1Char('/') + QString::fromStdString(identifier);
  return path.replace(QLatin1Char('.'), QLatin1Char('/')).replace(QLatin1Char('-'), QLatin1Char('_'));
}

QDBusMessage ApplicationObject::callFor(const std::string& identifier, const std::string& catalogueFolder,
                                        const StartRequest& request) {
  const auto make = [&](const char* method) {
    auto call = QDBusMessage::createMethodCall(QString::fromStdString(identifier), pathOf(identifier),
                                               applicationInterface, QLatin1String(method));
    // The one that is asked has just said that it is there.
    call.setAutoStartService(false);
    return call;
  };
  const auto data = platformDataFor(catalogueFolder, request);
  switch (request.kind) {
    case StartRequest::Kind::Open: {
      QStringList addresses;
      for (const auto& file : request.files) addresses.append(QString::fromStdString(fileUri(file)));
      return make("Open") << addresses << data;
    }
    case StartRequest::Kind::Action:
      return make("ActivateAction") << QString::fromStdString(request.action) << QVariantList() << data;
    case StartRequest::Kind::Activate:
      break;
  }
  return make("Activate") << data;
}

bool ApplicationObject::isOfOtherCatalogue(const QDBusMessage& answer) {
  return answer.type() == QDBusMessage::ErrorMessage && answer.errorName() == otherCatalogueError;
}

QString ApplicationObject::introspect(const QString& /*path*/) const {
  return QStringLiteral(R"xml(<interface name="org.freedesktop.Application">
  <method name="Activate">
    <arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
  <method name="Open">
    <arg type="as" name="uris" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg type="s" name="action_name" direction="in"/>
    <arg type="av" name="parameter" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
</interface>
)xml");
}

bool ApplicationObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const auto interface = message.interface();
  if (!interface.isEmpty() && interface != applicationInterface) return false;
  auto request = requestOf(message);
  if (!request) {
    return connection.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("There is none")));
  }
  const auto data = platformData(message);
  const auto catalogue = data.value(catalogueKey).toString();
  if (!catalogue.isEmpty() && catalogue != catalogue_) {
    return connection.send(message.createErrorReply(otherCatalogueError, QStringLiteral("It has another catalogue")));
  }
  request->activationToken = data.value(tokenKey, data.value(startupKey)).toString().toStdString();
  connection.send(message.createReply());
  onRequest_(*request);
  return true;
}

}  // namespace Nimbrel
