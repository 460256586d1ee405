#include "Model/ProductivityModels.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <utility>

namespace Nimbrel {

namespace {

struct SmartCollectionFacts {
  std::string_view rawValue;
  std::string_view title;
  std::string_view symbol;
};

// In the order of the cases.
constexpr std::array<SmartCollectionFacts, allSmartCollections.size()> smartCollections{{
    {"receipts", "Receipts", "receipt"},
    {"code", "Code", "chevron.left.forwardslash.chevron.right"},
    {"conversations", "Conversations", "bubble.left.and.bubble.right"},
    {"errors", "Errors", "exclamationmark.triangle"},
    {"tickets", "Tickets", "ticket"},
    {"documents", "Documents", "doc.text"},
}};

const SmartCollectionFacts& factsOf(SmartCollection collection) {
  return smartCollections[static_cast<std::size_t>(collection)];
}

// The keys are the names of the fields.
const auto idKey = QStringLiteral("id");
const std::array<std::pair<QString, std::string AutomationRule::*>, 5> textFields{{
    {QStringLiteral("name"), &AutomationRule::name},
    {QStringLiteral("containsText"), &AutomationRule::containsText},
    {QStringLiteral("source"), &AutomationRule::source},
    {QStringLiteral("tag"), &AutomationRule::tag},
    {QStringLiteral("project"), &AutomationRule::project},
}};
const std::array<std::pair<QString, bool AutomationRule::*>, 3> flagFields{{
    {QStringLiteral("favorite"), &AutomationRule::favorite},
    {QStringLiteral("fileToLibrary"), &AutomationRule::fileToLibrary},
    {QStringLiteral("enabled"), &AutomationRule::enabled},
}};

QJsonObject toJson(const AutomationRule& rule) {
  QJsonObject object{{idKey, rule.id.toString(QUuid::WithoutBraces).toUpper()}};
  for (const auto& [key, field] : textFields) object.insert(key, QString::fromStdString(rule.*field));
  for (const auto& [key, field] : flagFields) object.insert(key, rule.*field);
  return object;
}

std::optional<AutomationRule> ruleFromJson(const QJsonObject& object) {
  AutomationRule rule;
  rule.id = QUuid::fromString(object.value(idKey).toString());
  if (rule.id.isNull()) return std::nullopt;
  for (const auto& [key, field] : textFields) {
    const auto value = object.value(key);
    if (!value.isString()) return std::nullopt;
    rule.*field = value.toString().toStdString();
  }
  for (const auto& [key, field] : flagFields) {
    const auto value = object.value(key);
    if (!value.isBool()) return std::nullopt;
    rule.*field = value.toBool();
  }
  return rule;
}

}  // namespace

std::string_view rawValue(SmartCollection collection) { return factsOf(collection).rawValue; }
std::string_view title(SmartCollection collection) { return factsOf(collection).title; }
std::string_view symbol(SmartCollection collection) { return factsOf(collection).symbol; }

QJsonArray toJson(const std::vector<AutomationRule>& rules) {
  QJsonArray array;
  for (const auto& rule : rules) array.append(toJson(rule));
  return array;
}

std::optional<std::vector<AutomationRule>> rulesFromJson(const QJsonArray& array) {
  std::vector<AutomationRule> rules;
  for (const auto& element : array) {
    auto rule = ruleFromJson(element.toObject());
    if (!rule) return std::nullopt;
    rules.push_back(std::move(*rule));
  }
  return rules;
}

QByteArray encodedRules(const std::vector<AutomationRule>& rules) {
  return QJsonDocument(toJson(rules)).toJson(QJsonDocument::Compact);
}

std::optional<std::vector<AutomationRule>> decodedRules(const QByteArray& json) {
  const auto document = QJsonDocument::fromJson(json);
  if (!document.isArray()) return std::nullopt;
  return rulesFromJson(document.array());
}

}  // namespace Nimbrel
