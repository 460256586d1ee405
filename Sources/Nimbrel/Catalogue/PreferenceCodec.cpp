#include "Catalogue/PreferenceCodec.h"

#include "Platform/Defaults.h"

#include <QJsonArray>

#include <cmath>
#include <limits>

namespace Nimbrel {

std::string_view rawValue(GalleryLayout layout) { return layout == GalleryLayout::gallery ? "gallery" : "grid"; }

std::string_view rawValue(GallerySort sort) {
  switch (sort) {
    case GallerySort::oldest:
      return "oldest";
    case GallerySort::name:
      return "name";
    case GallerySort::newest:
      break;
  }
  return "newest";
}

std::optional<bool> PreferenceCodec<bool>::decode(const QJsonValue& stored) {
  if (!stored.isBool()) return std::nullopt;
  return stored.toBool();
}

std::optional<int> PreferenceCodec<int>::decode(const QJsonValue& stored) {
  const double number = stored.toDouble(0.5);
  if (number != std::floor(number) || std::abs(number) > std::numeric_limits<int>::max()) return std::nullopt;
  return static_cast<int>(number);
}

std::optional<double> PreferenceCodec<double>::decode(const QJsonValue& stored) {
  if (!stored.isDouble()) return std::nullopt;
  return stored.toDouble();
}

std::optional<std::string> PreferenceCodec<std::string>::decode(const QJsonValue& stored) {
  if (!stored.isString()) return std::nullopt;
  return stored.toString().toStdString();
}

QJsonValue PreferenceCodec<std::string>::encode(const std::string& value) { return QString::fromStdString(value); }

std::optional<std::vector<std::string>> PreferenceCodec<std::vector<std::string>>::decode(const QJsonValue& stored) {
  if (!stored.isArray()) return std::nullopt;
  std::vector<std::string> texts;
  for (const auto& element : stored.toArray()) {
    if (!element.isString()) return std::nullopt;
    texts.push_back(element.toString().toStdString());
  }
  return texts;
}

QJsonValue PreferenceCodec<std::vector<std::string>>::encode(const std::vector<std::string>& value) {
  QJsonArray array;
  for (const auto& text : value) array.append(QString::fromStdString(text));
  return array;
}

using OptionalText = PreferenceCodec<std::optional<std::string>>;

std::optional<OptionalText::Value> OptionalText::decode(const QJsonValue& stored) {
  if (!stored.isString()) return std::nullopt;
  const auto text = stored.toString();
  return text.isEmpty() ? Value() : Value(text.toStdString());
}

QJsonValue OptionalText::encode(const Value& value) {
  return value ? QJsonValue(QString::fromStdString(*value)) : QJsonValue(QJsonValue::Undefined);
}

std::optional<OptionalText::Value> OptionalText::fromJson(const QJsonValue& json) {
  return json.isNull() ? std::optional<Value>(std::in_place) : decode(json);
}

QJsonValue OptionalText::toJson(const Value& value) { return value ? encode(value) : QJsonValue(QJsonValue::Null); }

using RuleList = PreferenceCodec<std::vector<AutomationRule>>;

std::optional<RuleList::Value> RuleList::decode(const QJsonValue& stored) {
  const auto bytes = dataFrom(stored);
  return bytes ? decodedRules(*bytes) : std::nullopt;
}

QJsonValue RuleList::encode(const Value& value) { return dataValue(encodedRules(value)); }

std::optional<RuleList::Value> RuleList::fromJson(const QJsonValue& json) {
  return json.isArray() ? rulesFromJson(json.toArray()) : std::nullopt;
}

QJsonValue RuleList::toJson(const Value& value) { return Nimbrel::toJson(value); }

}  // namespace Nimbrel
