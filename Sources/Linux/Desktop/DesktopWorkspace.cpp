#include "Linux/Desktop/DesktopWorkspace.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Linux/Desktop/AppInfo.h"
#include "Linux/Desktop/FileMail.h"
#include "Linux/Desktop/FileSenders.h"
#include "Linux/Desktop/FileUri.h"
#include "Linux/Desktop/GLibHandles.h"
#include "Linux/Desktop/SessionBusConnection.h"

#include <QThreadPool>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

void launch(const std::string& uri) {
  GError* raised = nullptr;
  if (g_app_info_launch_default_for_uri(uri.c_str(), nullptr, &raised) != FALSE) return;
  const GLibError error(raised);
  Log::write("Nothing opens what was to be opened: " + std::string(error ? error->message : "no reason given"));
}

/// Whether a file manager has shown it, which the bus may have to start.
bool isShownByFileManager(const std::string& uri) {
  const auto bus = connectToSessionBus();
  if (!bus) return false;
  const std::array<const char*, 1> items{uri.c_str()};
  const GLibVariant reply(g_dbus_connection_call_sync(
      bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1",
      "ShowItems", g_variant_new("(@ass)", g_variant_new_strv(items.data(), items.size()), ""), nullptr,
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  return reply != nullptr;
}

void show(const std::string& path) {
  const auto uri = fileUri(path);
  if (uri.empty() || isShownByFileManager(uri)) return;
  launch(fileUri(std::string(FilePath::folder(path))));
}

std::string kindOf(const std::string& path) {
  const GLibObject<GFile> file(g_file_new_for_path(path.c_str()));
  const GLibObject<GFileInfo> info(
      g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
  return info ? textOf(g_file_info_get_content_type(info.get())) : std::string();
}

std::vector<Workspace::Taker> openersOfKind(const std::string& kind) {
  std::vector<Workspace::Taker> openers;
  const auto add = [&](GAppInfo* application) {
    auto id = textOf(g_app_info_get_id(application));
    const bool isKnown = std::ranges::find(openers, id, &Workspace::Taker::id) != openers.end();
    if (id.empty() || isKnown) return;
    openers.push_back(
        {.id = std::move(id), .name = textOf(g_app_info_get_name(application)), .icon = iconOf(application)});
  };
  if (const GLibObject<GAppInfo> chosen(g_app_info_get_default_for_type(kind.c_str(), FALSE)); chosen)
    add(chosen.get());
  GList* all = g_app_info_get_all_for_type(kind.c_str());
  for (const GList* link = all; link != nullptr; link = link->next) add(static_cast<GAppInfo*>(link->data));
  g_list_free_full(all, g_object_unref);
  return openers;
}

void launchWith(const std::string& uri, const std::string& id) {
  const GLibObject<GDesktopAppInfo> application(g_desktop_app_info_new(id.c_str()));
  if (!application || uri.empty()) return Log::write("There is no application " + id + " any more");
  const std::unique_ptr<GList, GLibRelease<g_list_free>> uris(g_list_append(nullptr, const_cast<char*>(uri.c_str())));
  GError* raised = nullptr;
  if (g_app_info_launch_uris(G_APP_INFO(application.get()), uris.get(), nullptr, &raised) != FALSE) return;
  const GLibError error(raised);
  Log::write("Cannot start " + id + ": " + std::string(error ? error->message : "no reason given"));
}

class DesktopWorkspace final : public Workspace {
 public:
  void openFile(const std::string& path) override { openURL(fileUri(path)); }
  void openURL(const std::string& url) override {
    if (url.empty()) return;
    threads_.start([url] { launch(url); });
  }
  void reveal(const std::string& path) override {
    threads_.start([path] { show(path); });
  }
  [[nodiscard]] std::vector<Taker> openersOf(const std::string& path) override {
    const auto kind = kindOf(path);
    return kind.empty() ? std::vector<Taker>() : openersOfKind(kind);
  }
  void openFileWith(const std::string& path, const std::string& opener) override {
    threads_.start([uri = fileUri(path), opener] { launchWith(uri, opener); });
  }
  void composeMail(const std::string& path) override {
    threads_.start([path] { FileMail::compose(path); });
  }
  [[nodiscard]] std::vector<Taker> senders() override { return FileSenders::installed(); }
  void sendFile(const std::string& path, const std::string& sender) override { FileSenders::send(path, sender); }

 private:
  QThreadPool threads_;  ///< waits for them at the end, so that what was asked for last still happens
};

}  // namespace

std::unique_ptr<Workspace> makeDesktopWorkspace() { return std::make_unique<DesktopWorkspace>(); }

}  // namespace Nimbrel
