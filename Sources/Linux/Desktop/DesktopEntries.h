#pragma once

#include "Platform/FrontApplication.h"
#include "Platform/InstalledApplications.h"

#include <compare>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// What is known of a running program; each may be empty.
struct ProgramTraces {
  std::string desktopEntry;  ///< id of its entry, as it says itself
  std::string className;
  std::string instanceName;
  std::string executable;  ///< name of its file

  auto operator<=>(const ProgramTraces&) const = default;
};

/// An application as its entry tells; texts that it lacks are empty.
struct DesktopEntry {
  std::string id;    ///< without ".desktop"
  std::string name;  ///< in the user's language
  std::string plainName;
  std::string windowClass;
  std::string executable;  ///< name of its file
  std::string icon;        ///< a name for the icon theme, or the absolute path of a picture
  bool isShown = false;    ///< in menus
};

/// The installed applications. Main thread only.
class DesktopEntries final : public InstalledApplications {
 public:
  DesktopEntries();
  ~DesktopEntries() override;
  DesktopEntries(const DesktopEntries&) = delete;
  DesktopEntries& operator=(const DesktopEntries&) = delete;

  /// The application that the program belongs to, by its own word, then by the class that its windows are to have, by
  /// the id of the entry, and by the only entry that starts that file.
  [[nodiscard]] std::optional<Application> find(const ProgramTraces& traces);

  [[nodiscard]] std::optional<IconName> iconOfIdentifier(std::string_view bundleID) override;
  /// By the name that the user sees, then by the entry's name in no language, then by its id.
  [[nodiscard]] std::optional<IconName> iconOfName(std::string_view name) override;

 private:
  struct Monitor;

  const std::vector<DesktopEntry>& entries();

  // Until an application is installed or removed
  std::optional<std::vector<DesktopEntry>> entries_;  ///< those that the user is shown stand first
  std::map<ProgramTraces, std::optional<Application>> known_;

  std::unique_ptr<Monitor> monitor_;
};

}  // namespace Nimbrel
