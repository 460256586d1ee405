#pragma once

#include "Analysis/ShotText.h"
#include "Model/Models.h"

#include <string>
#include <string_view>

namespace Nimbrel {

/// Where a shot comes from, as the user sees it in the sidebar: worked out from what the picture says, and only then
/// from what was recorded when it was taken. A plain value.
struct ContentGroup {
  enum class Kind { desktop, app, unknown };

  std::string key;    ///< "desktop", "unknown", or "app:" and the lower-cased title
  std::string title;  ///< "Google Chrome"
  Kind kind = Kind::unknown;
  std::string bundleID;  ///< identifier of the application; may be empty

  bool operator==(const ContentGroup&) const = default;

  [[nodiscard]] static const ContentGroup& desktop();
  [[nodiscard]] static const ContentGroup& unknown();

  /// The group of a shot. Pure, any thread.
  [[nodiscard]] static ContentGroup forShot(const Shot& shot);
  /// The same, with the shot's text made ready.
  [[nodiscard]] static ContentGroup forShot(const Shot& shot, const ShotText& text);
  /// The group of an application by its name, with the names and identifiers of well-known ones put right.
  [[nodiscard]] static ContentGroup namedApplication(std::string_view name, std::string_view bundleID);
};

/// "desktop", "app", "unknown".
[[nodiscard]] std::string_view rawValue(ContentGroup::Kind kind);

}  // namespace Nimbrel
