#include "App/UpdateSettings.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <string_view>

namespace Nimbrel {

namespace {

constexpr qint64 mostBytes = 64 << 10;

/// A value that was never filled in.
bool isPlaceholder(std::string_view value) { return value.find("NIMBREL_") != std::string_view::npos; }

}  // namespace

UpdateSettings UpdateSettings::read(const std::string& path) {
  QFile file(QFile::decodeName(path.c_str()));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const auto keys = QJsonDocument::fromJson(file.read(mostBytes)).object();
  return {.feedURL = keys.value(QLatin1String("SUFeedURL")).toString().toStdString(),
          .publicKey = keys.value(QLatin1String("SUPublicEDKey")).toString().toStdString()};
}

bool UpdateSettings::isConfigured(ProcessRole role) const {
  return role == ProcessRole::mainApplication && feedURL.starts_with("https://") && !isPlaceholder(feedURL) &&
         !publicKey.empty() && !isPlaceholder(publicKey);
}

}  // namespace Nimbrel
