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

/// What was given as a value, read as JSON; undefined when it is none.
QJsonValue jsonValue(const std::string& text) {
  const auto list = QJsonDocument::fromJson(QByteArray::fromStdString("[" + text + "]")).array();
  return list.size() == 1 ? list.first() : QJsonValue(QJsonValue::Undefined);
}

/// A value for a setting of text may also be given as it stands.
AnyPreference::Assignment assign(AnyPreference& preference, const std::string& text) {
  const auto assignment = preference.setFromJson(jsonValue(text));
  const bool isPlainText = assignment == AnyPreference::Assignment::WrongType && preference.isText();
  return isPlainText ? preference.setFromJson(jsonString(text)) : assignment;
}

Outcome allSettings(Settings& settings) {
  QJsonObject object;
  std::string text;
  for (const auto* preference : settings.all()) {
    object.insert(preference->key(), preference->toJson());
    text += preference->key().toStdString() + ": " + plainText(preference->toJson()) + "\n";
  }
  return Outcome::done(object, text);
}

AnyPreference* preferenceNamed(Settings& settings, const std::string& key) {
  const auto found = std::ranges::find(settings.all(), jsonString(key), &AnyPreference::key);
  return found == settings.all().end() ? nullptr : *found;
}

}  // namespace

Outcome runSettings(const CommandLine& line, Session& session) {
  const auto store = session.store();
  if (!store) return Outcome::failed(store.error().message);
  auto& settings = store.value()->settings();
  if (line.arguments.empty()) return allSettings(settings);

  auto* preference = preferenceNamed(settings, line.arguments.front());
  if (preference == nullptr) return Outcome::misused("unknown setting " + line.arguments.front());
  if (line.arguments.size() == 1) return Outcome::done(preference->toJson(), plainText(preference->toJson()) + "\n");

  switch (assign(*preference, line.arguments[1])) {
    case AnyPreference::Assignment::WrongType:
      return Outcome::failed("not a value for " + line.arguments.front() + ": " + line.arguments[1]);
    case AnyPreference::Assignment::NotStored:
      return Outcome::failed("the settings cannot be written");
    case AnyPreference::Assignment::Stored:
      break;
  }
  return Outcome::changed(store.value()->status());
}

}  // namespace Nimbrel::Ctl
