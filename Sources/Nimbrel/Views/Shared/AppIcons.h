#pragma once

#include "Platform/InstalledApplications.h"

#include <QIcon>

#include <string>
#include <string_view>
#include <unordered_map>

namespace Nimbrel {

/// The icons of the applications that shots are of. Each is looked for once, also if there is none, since lists ask for
/// them at each row. Needs a QGuiApplication. Main thread only.
class AppIcons {
 public:
  /// The applications must outlive it.
  explicit AppIcons(InstalledApplications& applications) : applications_(applications) {}

  /// The icon of the application with that identifier, which may be empty, or else of the one that is called so; a
  /// general one for an application that has none. Null when neither is installed. Marks that nobody sees do not count
  /// in a name.
  [[nodiscard]] QIcon icon(std::string_view name, std::string_view bundleID);

 private:
  [[nodiscard]] QIcon lookup(std::string_view name, std::string_view bundleID) const;

  InstalledApplications& applications_;
  std::unordered_map<std::string, QIcon> cache_;  ///< by identifier, or by name where there is none
};

}  // namespace Nimbrel
