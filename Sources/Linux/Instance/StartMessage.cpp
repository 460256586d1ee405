#include "Linux/Instance/StartMessage.h"

#include "Linux/Desktop/FileUri.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace Nimbrel {

namespace {

const auto kindKey = QStringLiteral("kind");
const auto filesKey = QStringLiteral("files");
const auto actionKey = QStringLiteral("action");
const auto tokenKey = QStringLiteral("token");

/// In the order of the enumeration.
const std::array kindNames{QStringLiteral("activate"), QStringLiteral("open"), QStringLiteral("action")};

}  // namespace

QByteArray StartMessage::encode(const StartRequest& request) {
  QJsonArray files;
  // As addresses, since names are bytes and need not be text.
  for (const auto& file : request.files) files.append(QString::fromStdString(fileUri(file)));
  const QJsonObject message{{kindKey, kindNames.at(static_cast<std::size_t>(request.kind))},
                            {filesKey, files},
                            {actionKey, QString::fromStdString(request.action)},
                            {tokenKey, QString::fromStdString(request.activationToken)}};
  return QJsonDocument(message).toJson(QJsonDocument::Compact);
}

std::optional<StartRequest> StartMessage::decode(const QByteArray& message) {
  const auto object = QJsonDocument::fromJson(message).object();
  const auto name = object.value(kindKey).toString();
  StartRequest request{.action = object.value(actionKey).toString().toStdString(),
                       .activationToken = object.value(tokenKey).toString().toStdString()};
  for (const auto& file : object.value(filesKey).toArray()) {
    if (auto path = fileOfUri(file.toString().toStdString()); !path.empty()) request.files.push_back(std::move(path));
  }
  for (std::size_t i = 0; i < kindNames.size(); ++i) {
    if (name != kindNames.at(i)) continue;
    request.kind = static_cast<StartRequest::Kind>(i);
    return request;
  }
  return std::nullopt;
}

}  // namespace Nimbrel
