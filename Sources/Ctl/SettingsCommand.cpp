#include "CommandTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace Nimbrel::Ctl {

namespace {

/// A value for people: text as it stands, all else as JSON.
std::string plainText(const QJsonValue& value) {
  return value.isString() ? value.toString().toStdString() : jsonText(value);
}

/// What was given as a value: JSON, or the text itself where the setting is text.
QJsonValue givenValue(const std::string& text, bool settingIsText) {
  const auto list = QJsonDocument::fromJson(QByteArray::fromStdString("[" + text + "]")).array();
  auto json = list.size() == 1 ? list.first() : QJsonValue(QJsonValue::Undefined);
  if (settingIsText && !json.isString() && !json.isNull()) return jsonString(text);
  return json;
}

Outcome allSettings(const Settings& settings) {
  QJsonObject object;
  std::string text;
  for (const auto* preference : settings.all()) {
    object.insert(preference->key(), preference->toJson());
    text += preference->key().toStdString() + ": " + plainText(preference->toJson()) + "\n";
  }
  return Outcome::done(object, text);
}

AnyPreference* preferenceNamed(const Settings& settings, const std::string& key) {
  const auto found = std::ranges::find(settings.all(), jsonString(key), &AnyPreference::key);
  return found == settings.all().end() ? nullptr : *found;
}

}  // namespace

Outcome runSettings(const CommandLine& line, Session& session) {
  const auto store = session.store();
  if (!store) return Outcome::failed(store.error().message);
  const auto& settings = store.value()->settings();
  if (line.arguments.empty()) return allSettings(settings);

  auto* preference = preferenceNamed(settings, line.arguments.front());
  if (preference == nullptr) return Outcome::misused("unknown setting " + line.arguments.front());
  if (line.arguments.size() == 1) return Outcome::done(preference->toJson(), plainText(preference->toJson()) + "\n");

  const auto value = givenValue(line.arguments[1], preference->isText());
  if (!preference->setFromJson(value)) {
    return Outcome::failed("not a value for " + line.arguments.front() + ": " + line.arguments[1]);
  }
  return Outcome::changed(store.value()->status());
}

}  // namespace Nimbrel::Ctl
