#pragma once

#include "Platform/Defaults.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace Nimbrel {

/// Who this process is. The companion is the same executable, started under a name of its own.
class AppIdentity {
 public:
  /// From the name that the process was started under (its first argument, with or without folders).
  [[nodiscard]] static AppIdentity fromProgramName(std::string_view programName);

  /// The identifier that all processes of the program share; names the settings suite.
  [[nodiscard]] static const std::string& bundleIdentifier();

  /// Whether an application with this identifier is one of ours.
  [[nodiscard]] static bool isOurs(std::string_view identifier);

  /// This process's own identifier: the shared one, followed by ".menubar" in the companion.
  [[nodiscard]] const std::string& processIdentifier() const { return processIdentifier_; }

  /// Whether this process is the companion.
  [[nodiscard]] bool isMenuBarHelper() const;

  /// Opens the settings suite that all processes share, in the folder of the suites. Settings that builds of old kept
  /// under another identifier are taken over the first time, without overwriting any. Never null.
  [[nodiscard]] static std::unique_ptr<Defaults> openDefaults(const std::string& preferencesFolder);

 private:
  explicit AppIdentity(std::string processIdentifier) : processIdentifier_(std::move(processIdentifier)) {}

  std::string processIdentifier_;
};

}  // namespace Nimbrel
