#pragma once

#include "Model/Models.h"

#include <QByteArray>
#include <QJsonArray>
#include <QUuid>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Nimbrel {

/// The fixed views that sort shots by what their text says.
enum class SmartCollection { receipts, code, conversations, errors, tickets, documents };
inline constexpr std::array allSmartCollections{SmartCollection::receipts,      SmartCollection::code,
                                                SmartCollection::conversations, SmartCollection::errors,
                                                SmartCollection::tickets,       SmartCollection::documents};
/// The text by which a case is known outside: its name.
[[nodiscard]] std::string_view rawValue(SmartCollection collection);
/// What the sidebar calls it.
[[nodiscard]] std::string_view title(SmartCollection collection);
/// The name of its icon.
[[nodiscard]] std::string_view symbol(SmartCollection collection);

/// The shots of one source application, offered as a pile.
struct ShotStack {
  std::string id;                      ///< "stack:" and the key of the group
  std::string title;                   ///< the group's title
  std::string symbol;                  ///< the name of its icon
  std::string bundleID;                ///< the group's identifier; may be empty
  std::unordered_set<ShotID> shotIDs;  ///< the members
  Timestamp newest;                    ///< the latest date among the members

  bool operator==(const ShotStack&) const = default;
};

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
