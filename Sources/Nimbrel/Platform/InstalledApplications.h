#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel {

/// The applications that the desktop knows, for their icons. Main thread only.
class InstalledApplications {
 public:
  /// What an application is shown by: a name for the icon theme, or the absolute path of a picture. Empty when the
  /// application names none.
  using IconName = std::string;

  virtual ~InstalledApplications() = default;

  /// Of the application with that identifier; absent when it is not installed.
  [[nodiscard]] virtual std::optional<IconName> iconOfIdentifier(std::string_view bundleID) = 0;

  /// Of the application that the user knows under that name, or whose entry is called so; absent when there is none.
  [[nodiscard]] virtual std::optional<IconName> iconOfName(std::string_view name) = 0;
};

/// Where none are known.
class NullInstalledApplications final : public InstalledApplications {
 public:
  [[nodiscard]] std::optional<IconName> iconOfIdentifier(std::string_view) override { return std::nullopt; }
  [[nodiscard]] std::optional<IconName> iconOfName(std::string_view) override { return std::nullopt; }
};

}  // namespace Nimbrel
