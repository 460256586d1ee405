#include "Linux/Desktop/DesktopEntries.h"

#include "Foundation/FilePath.h"

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

struct Entry {
  std::string id;
  std::string name;
  std::string windowClass;
  std::string executable;
  bool isShown = false;
};

std::string textOf(const char* text) { return text == nullptr ? std::string() : std::string(text); }

Entry entryOf(GAppInfo* application) {
  Entry entry;
  entry.id = textOf(g_app_info_get_id(application));
  if (entry.id.ends_with(extension)) entry.id.resize(entry.id.size() - extension.size());
  entry.name = textOf(g_app_info_get_name(application));
  if (G_IS_DESKTOP_APP_INFO(application)) {
    entry.windowClass = textOf(g_desktop_app_info_get_startup_wm_class(G_DESKTOP_APP_INFO(application)));
  }
  entry.executable = FilePath::lastComponent(textOf(g_app_info_get_executable(application)));
  entry.isShown = g_app_info_should_show(application) != FALSE;
  return entry;
}

/// Those that the user is shown stand first.
std::vector<Entry> installedEntries() {
  std::vector<Entry> entries;
  GList* all = g_app_info_get_all();
  for (const GList* link = all; link != nullptr; link = link->next) {
    entries.push_back(entryOf(static_cast<GAppInfo*>(link->data)));
  }
  g_list_free_full(all, g_object_unref);
  std::ranges::stable_partition(entries, &Entry::isShown);
  return entries;
}

bool isSame(const std::string& left, const std::string& right) {
  return !left.empty() && g_ascii_strcasecmp(left.c_str(), right.c_str()) == 0;
}

bool isCalled(const Entry& entry, const std::string& name) {
  return isSame(name, entry.id) || isSame(name, entry.id.substr(entry.id.rfind('.') + 1));
}

using Test = std::function<bool(const Entry&)>;

const Entry* firstOf(const std::vector<Entry>& entries, const Test& test) {
  const auto found = std::ranges::find_if(entries, test);
  return found == entries.end() ? nullptr : &*found;
}

/// Entries of an interpreter's programs all start the same file.
const Entry* onlyOf(const std::vector<Entry>& entries, const Test& test) {
  return std::ranges::count_if(entries, test) == 1 ? firstOf(entries, test) : nullptr;
}

const Entry* entryFor(const std::vector<Entry>& entries, const ProgramTraces& traces) {
  const auto first = [&](const Test& test) { return firstOf(entries, test); };
  if (const auto* entry = first([&](const Entry& e) { return isSame(traces.desktopEntry, e.id); })) return entry;
  for (const auto* name : {&traces.className, &traces.instanceName}) {
    if (const auto* entry = first([&](const Entry& e) { return isSame(*name, e.windowClass); })) return entry;
  }
  for (const auto* name : {&traces.className, &traces.instanceName}) {
    if (const auto* entry = first([&](const Entry& e) { return isCalled(e, *name); })) return entry;
  }
  return onlyOf(entries, [&](const Entry& e) { return !e.executable.empty() && e.executable == traces.executable; });
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

  static void forget(DesktopEntries* entries) { entries->known_.clear(); }

  GAppInfoMonitor* source;
  gulong handler;
};

DesktopEntries::DesktopEntries() = default;
DesktopEntries::~DesktopEntries() = default;

std::optional<Application> DesktopEntries::find(const ProgramTraces& traces) {
  // Told from the first look on: before it nothing is known that could change.
  if (!monitor_) monitor_ = std::make_unique<Monitor>(*this);
  if (const auto known = known_.find(traces); known != known_.end()) return known->second;
  const auto entries = installedEntries();
  const auto* entry = entryFor(entries, traces);
  auto application = entry == nullptr ? std::nullopt : std::optional(Application{entry->name, entry->id});
  return known_.emplace(traces, std::move(application)).first->second;
}

}  // namespace Nimbrel
