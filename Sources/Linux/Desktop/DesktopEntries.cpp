#include "Linux/Desktop/DesktopEntries.h"

#include "Foundation/FilePath.h"
#include "Foundation/Text.h"
#include "Linux/Desktop/AppInfo.h"
#include "Linux/Desktop/GLibHandles.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

constexpr std::string_view extension = ".desktop";

DesktopEntry entryOf(GAppInfo* application) {
  DesktopEntry entry;
  entry.id = textOf(g_app_info_get_id(application));
  if (entry.id.ends_with(extension)) entry.id.resize(entry.id.size() - extension.size());
  entry.name = textOf(g_app_info_get_name(application));
  if (G_IS_DESKTOP_APP_INFO(application)) {
    auto* keys = G_DESKTOP_APP_INFO(application);
    entry.windowClass = textOf(g_desktop_app_info_get_startup_wm_class(keys));
    const GLibText plainName(g_desktop_app_info_get_string(keys, G_KEY_FILE_DESKTOP_KEY_NAME));
    entry.plainName = textOf(plainName.get());
  }
  entry.executable = FilePath::lastComponent(textOf(g_app_info_get_executable(application)));
  entry.icon = iconOf(application);
  entry.isShown = g_app_info_should_show(application) != FALSE;
  return entry;
}

/// Those that the user is shown stand first.
std::vector<DesktopEntry> installedEntries() {
  std::vector<DesktopEntry> entries;
  GList* all = g_app_info_get_all();
  for (const GList* link = all; link != nullptr; link = link->next) {
    entries.push_back(entryOf(static_cast<GAppInfo*>(link->data)));
  }
  g_list_free_full(all, g_object_unref);
  std::ranges::stable_partition(entries, &DesktopEntry::isShown);
  return entries;
}

bool isSame(const std::string& left, const std::string& right) {
  return !left.empty() && g_ascii_strcasecmp(left.c_str(), right.c_str()) == 0;
}

bool isCalled(const DesktopEntry& entry, const std::string& name) {
  return isSame(name, entry.id) || isSame(name, entry.id.substr(entry.id.rfind('.') + 1));
}

using Test = std::function<bool(const DesktopEntry&)>;

const DesktopEntry* firstOf(const std::vector<DesktopEntry>& entries, const Test& test) {
  const auto found = std::ranges::find_if(entries, test);
  return found == entries.end() ? nullptr : &*found;
}

/// Entries of an interpreter's programs all start the same file.
const DesktopEntry* onlyOf(const std::vector<DesktopEntry>& entries, const Test& test) {
  return std::ranges::count_if(entries, test) == 1 ? firstOf(entries, test) : nullptr;
}

const DesktopEntry* entryFor(const std::vector<DesktopEntry>& entries, const ProgramTraces& traces) {
  const auto first = [&](const Test& test) { return firstOf(entries, test); };
  if (const auto* entry = first([&](const DesktopEntry& e) { return isSame(traces.desktopEntry, e.id); })) return entry;
  for (const auto* name : {&traces.className, &traces.instanceName}) {
    if (const auto* entry = first([&](const DesktopEntry& e) { return isSame(*name, e.windowClass); })) return entry;
  }
  for (const auto* name : {&traces.className, &traces.instanceName}) {
    if (const auto* entry = first([&](const DesktopEntry& e) { return isCalled(e, *name); })) return entry;
  }
  return onlyOf(entries,
                [&](const DesktopEntry& e) { return !e.executable.empty() && e.executable == traces.executable; });
}

}  // namespace

struct DesktopEntries::Monitor {
  explicit Monitor(DesktopEntries& entries)
      : source(g_app_info_monitor_get()),
        handler(g_signal_connect_swapped(source, "changed", G_CALLBACK(&Monitor::forget), &entries)) {}
  ~Monitor() {
    g_signal_handler_disconnect(source, handler);
    g_object_unref(source);
  }
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  static void forget(DesktopEntries* entries) {
    entries->entries_.reset();
    entries->known_.clear();
  }

  GAppInfoMonitor* source;
  gulong handler;
};

DesktopEntries::DesktopEntries() = default;
DesktopEntries::~DesktopEntries() = default;

const std::vector<DesktopEntry>& DesktopEntries::entries() {
  // Told from the first look on: before it nothing is known that could change.
  if (!monitor_) monitor_ = std::make_unique<Monitor>(*this);
  if (!entries_) entries_ = installedEntries();
  return *entries_;
}

std::optional<Application> DesktopEntries::find(const ProgramTraces& traces) {
  if (const auto known = known_.find(traces); known != known_.end()) return known->second;
  const auto* entry = entryFor(entries(), traces);
  auto application = entry == nullptr ? std::nullopt : std::optional(Application{entry->name, entry->id});
  return known_.emplace(traces, std::move(application)).first->second;
}

std::optional<std::string> DesktopEntries::iconOfIdentifier(std::string_view bundleID) {
  const auto* entry = firstOf(entries(), [&](const DesktopEntry& e) { return e.id == bundleID; });
  return entry == nullptr ? std::nullopt : std::optional(entry->icon);
}

std::optional<std::string> DesktopEntries::iconOfName(std::string_view name) {
  for (const auto text : {&DesktopEntry::name, &DesktopEntry::plainName, &DesktopEntry::id}) {
    const auto* entry = firstOf(entries(), [&](const DesktopEntry& e) { return Text::trimmed(e.*text) == name; });
    if (entry != nullptr) return entry->icon;
  }
  return std::nullopt;
}

}  // namespace Nimbrel
