#include "Platform/Checkup.h"

#include "Linux/Checkup/Findings.h"

#include <utility>

namespace Nimbrel {

std::vector<Checkup::Finding> Checkup::run(const std::set<HotkeyAction>& wanted) {
  const auto session = sessionKind();
  const auto bus = lookAtBus();
  std::vector<Finding> findings{sessionFinding(session), trayFinding(bus)};
  const auto append = [&findings](std::vector<Finding> more) {
    for (auto& finding : more) findings.push_back(std::move(finding));
  };
  append(portalFindings(session, bus));
  append(hotkeyFindings(session, bus, wanted));
  append(readingFindings());
  findings.push_back(watchFinding());
  findings.push_back(authenticationFinding());
  append(encoderFindings());
  return findings;
}

}  // namespace Nimbrel
