#pragma once

#include "Platform/FrontApplication.h"

#include <compare>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

/// What is known of a running program; each may be empty.
struct ProgramTraces {
  std::string desktopEntry;  ///< id of its entry, as it says itself
  std::string className;
  std::string instanceName;
  std::string executable;  ///< name of its file

  auto operator<=>(const ProgramTraces&) const = default;
};

/// The installed applications. Main thread only.
class DesktopEntries {
 public:
  DesktopEntries();
  ~DesktopEntries();
  DesktopEntries(const DesktopEntries&) = delete;
  DesktopEntries& operator=(const DesktopEntries&) = delete;

  /// The application that the program belongs to, by its own word, then by the class that its windows are to have, by
  /// the id of the entry, and by the only entry that starts that file.
  [[nodiscard]] std::optional<Application> find(const ProgramTraces& traces);

 private:
  struct Monitor;

  std::map<ProgramTraces, std::optional<Application>> known_;  ///< until an application is installed or removed
  std::unique_ptr<Monitor> monitor_;
};

}  // namespace Nimbrel
