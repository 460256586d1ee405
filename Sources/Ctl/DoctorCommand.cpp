#include "CommandTable.h"

#include "Platform/Checkup.h"

#include <QJsonArray>
#include <QJsonObject>

#include <iomanip>
#include <sstream>

namespace Nimbrel::Ctl {

namespace {

/// The hotkeys that are switched on; none where the settings cannot be had, which is no reason not to look.
std::set<HotkeyAction> wantedHotkeys(Session& session) {
  const auto store = session.store();
  if (!store) return {};
  const auto& settings = store.value()->settings();
  std::set<HotkeyAction> wanted;
  if (settings.captureHotkey()) wanted.insert(HotkeyAction::capture);
  if (settings.quickFindHotkey()) wanted.insert(HotkeyAction::quickFind);
  return wanted;
}

QJsonObject record(const Checkup::Finding& finding) {
  return {{QStringLiteral("name"), jsonString(finding.name)},
          {QStringLiteral("present"), finding.isPresent},
          {QStringLiteral("advice"), jsonString(finding.advice)}};
}

}  // namespace

Outcome runDoctor(const CommandLine&, Session& session) {
  constexpr int verdictWidth = 9;
  QJsonArray list;
  std::ostringstream text;
  for (const auto& finding : Checkup::run(wantedHotkeys(session))) {
    list.append(record(finding));
    text << std::left << std::setw(verdictWidth) << (finding.isPresent ? "present" : "missing")
         << printable(finding.name);
    if (!finding.advice.empty()) text << ": " << printable(finding.advice);
    text << '\n';
  }
  return Outcome::done(list, text.str());
}

}  // namespace Nimbrel::Ctl
