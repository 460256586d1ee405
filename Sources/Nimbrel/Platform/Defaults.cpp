#include "Platform/Defaults.h"

#include "Foundation/Log.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

namespace Nimbrel {

namespace {

const QString dataKey = QStringLiteral("$data");

/// Named by its content, so that a damaged file that stays where it is leaves one copy and not one with every start.
void copyAside(const QIODevice& device, const QByteArray& content) {
  const auto* file = qobject_cast<const QFile*>(&device);
  if (file == nullptr) return;
  const auto digest = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex().left(8);
  const QString copy = file->fileName() + QLatin1String(".damaged-") + QLatin1String(digest);
  if (QFile::exists(copy)) return;
  const bool copied = QFile::copy(file->fileName(), copy);
  Log::write("Nimbrel: settings file " + file->fileName().toStdString() + " is damaged, " +
             (copied ? "kept as " + copy.toStdString() : std::string("and could not be copied aside")));
}

bool readJson(QIODevice& device, QSettings::SettingsMap& map) {
  const QByteArray content = device.readAll();
  const auto document = QJsonDocument::fromJson(content);
  if (!document.isObject()) {
    // Returning false would let the next write replace the file with no more than the key just set.
    if (!content.trimmed().isEmpty()) copyAside(device, content);
    return true;
  }
  const auto object = document.object();
  for (auto entry = object.begin(); entry != object.end(); ++entry) {
    map.insert(entry.key(), QVariant::fromValue(QJsonValue(entry.value())));
  }
  return true;
}

bool writeJson(QIODevice& device, const QSettings::SettingsMap& map) {
  QJsonObject object;
  for (auto entry = map.begin(); entry != map.end(); ++entry) object.insert(entry.key(), entry.value().toJsonValue());
  const QByteArray content = QJsonDocument(object).toJson();
  return device.write(content) == content.size();
}

QSettings::Format jsonFormat() {
  static const auto format = QSettings::registerFormat(QStringLiteral("json"), readJson, writeJson, Qt::CaseSensitive);
  return format;
}

QString suiteFile(const std::string& folder, const std::string& name) {
  return QFile::decodeName(folder.c_str()) + QLatin1Char('/') + QString::fromStdString(name) + QLatin1String(".json");
}

/// What QSettings objects over one file have left to write is shared by them all, but each tells its first error for
/// good: a new one tries anew and tells only of that.
bool isWrittenByNow(const QString& file) {
  QSettings again(file, jsonFormat());
  again.sync();
  return again.status() == QSettings::NoError;
}

}  // namespace

Defaults::Defaults(const std::string& folder, const std::string& name)
    : settings_(suiteFile(folder, name), jsonFormat()) {}

QJsonValue Defaults::value(const QString& key) const {
  return settings_.contains(key) ? settings_.value(key).toJsonValue() : QJsonValue(QJsonValue::Undefined);
}

QStringList Defaults::keys() const { return settings_.allKeys(); }

bool Defaults::set(const QString& key, const QJsonValue& value) {
  makeFolder();
  settings_.setValue(key, QVariant::fromValue(value));
  return write();
}

bool Defaults::remove(const QString& key) {
  if (!settings_.contains(key)) return true;
  settings_.remove(key);
  return write();
}

bool Defaults::write() {
  settings_.sync();
  if (settings_.status() == QSettings::NoError || isWrittenByNow(filePath())) return true;
  Log::write("Nimbrel: settings file " + filePath().toStdString() + " cannot be written");
  return false;
}

void Defaults::synchronize() { settings_.sync(); }

void Defaults::makeFolder() const {
  const QString folder = QFileInfo(settings_.fileName()).path();
  if (QFileInfo::exists(folder) || !QDir().mkpath(folder)) return;
  QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QJsonValue dataValue(const QByteArray& bytes) { return QJsonObject{{dataKey, QString::fromLatin1(bytes.toBase64())}}; }

std::optional<QByteArray> dataFrom(const QJsonValue& value) {
  const auto object = value.toObject();
  const auto text = object.value(dataKey);
  if (object.size() != 1 || !text.isString()) return std::nullopt;
  auto decoded = QByteArray::fromBase64Encoding(text.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded) return std::nullopt;
  return *decoded;
}

}  // namespace Nimbrel
