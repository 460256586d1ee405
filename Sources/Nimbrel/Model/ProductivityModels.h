#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QUuid>

#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// The user's own way of sorting shots: conditions on text and source, and what to do with the shots that meet them.
struct AutomationRule {
  QUuid id;                    ///< identity
  std::string name;            ///< shown to the user only
  std::string containsText;    ///< condition on the shot's text
  std::string source;          ///< condition on the shot's application
  std::string tag;             ///< tag to add
  std::string project;         ///< project to put the shot in
  bool favorite = false;       ///< mark as favourite
  bool fileToLibrary = false;  ///< file the shot into the library
  bool enabled = true;         ///< whether the rule runs

  bool operator==(const AutomationRule&) const = default;
};

/// The list as a JSON array of objects with the field names as keys.
[[nodiscard]] QJsonArray toJson(const std::vector<AutomationRule>& rules);

/// Absent unless every element is an object that holds every key with a value of the right type.
[[nodiscard]] std::optional<std::vector<AutomationRule>> rulesFromJson(const QJsonArray& array);

/// The same as bytes of UTF-8 JSON, the form that is stored.
[[nodiscard]] QByteArray encodedRules(const std::vector<AutomationRule>& rules);
[[nodiscard]] std::optional<std::vector<AutomationRule>> decodedRules(const QByteArray& json);

}  // namespace Nimbrel
