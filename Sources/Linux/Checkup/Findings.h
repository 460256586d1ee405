#pragma once

#include "Linux/Desktop/SessionKind.h"
#include "Platform/Checkup.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// The parts of a checkup, by subject.
namespace Nimbrel::Checkup {

/// What answers on the session bus.
struct BusFindings {
  bool hasTrayHost = false;       ///< for icons that are told over the bus
  std::set<std::string> portals;  ///< those of portalNames() that there are
};

/// The portals that we make use of: "Screenshot".
[[nodiscard]] const std::vector<std::string>& portalNames();
/// Waits for the bus and for what has to be started on it; nothing is found where there is no bus.
[[nodiscard]] BusFindings lookAtBus();

[[nodiscard]] Finding sessionFinding(SessionKind session);
[[nodiscard]] Finding trayFinding(const BusFindings& bus);
[[nodiscard]] std::vector<Finding> portalFindings(SessionKind session, const BusFindings& bus);
/// Holds each combination for a moment, to see whether that can be.
[[nodiscard]] std::vector<Finding> hotkeyFindings(SessionKind session, const BusFindings& bus,
                                                  const std::set<HotkeyAction>& wanted);

/// The recogniser, and the models of the user's languages.
[[nodiscard]] std::vector<Finding> readingFindings();
/// The same from the models that the recogniser has; absent where it does not start. `program` is where it should be.
[[nodiscard]] std::vector<Finding> readingFindings(const std::string& program,
                                                   const std::optional<std::vector<std::string>>& models,
                                                   const std::vector<std::string>& languages);

[[nodiscard]] Finding watchFinding();
/// The same from what the kernel says: how many folders a user may have watched at once, absent where it does not say;
/// and whether one of them can be watched now.
[[nodiscard]] Finding watchFinding(std::optional<std::int64_t> limit, bool canWatch);

[[nodiscard]] Finding authenticationFinding();
/// The same for an account, by its name, which is empty where there is none, and a service that it would be asked by,
/// empty where none is installed.
[[nodiscard]] Finding authenticationFinding(std::string_view account, std::string_view service);

[[nodiscard]] std::vector<Finding> encoderFindings();

}  // namespace Nimbrel::Checkup
