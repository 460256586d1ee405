#include "Linux/Desktop/DesktopWorkspace.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Linux/Desktop/GLibHandles.h"

#include <QThreadPool>

#include <gio/gio.h>

#include <array>
#include <string>

namespace Nimbrel {

namespace {

/// Escapes what an address cannot hold, byte by byte: names need not be valid UTF-8. Empty for a path that is not
/// absolute.
std::string uriOf(const std::string& path) {
  const GLibText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
  return uri ? std::string(uri.get()) : std::string();
}

void launch(const std::string& uri) {
  GError* raised = nullptr;
  if (g_app_info_launch_default_for_uri(uri.c_str(), nullptr, &raised) != FALSE) return;
  const GLibError error(raised);
  Log::write("Nothing opens what was to be opened: " + std::string(error ? error->message : "no reason given"));
}

/// A connection of our own: the one that the library shares would end this process with the bus.
GLibObject<GDBusConnection> sessionBus() {
  const GLibText address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  // It would start a bus on which nobody is.
  if (!address || g_str_has_prefix(address.get(), "autolaunch:") != FALSE) return nullptr;
  constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                           G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  return GLibObject<GDBusConnection>(
      g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, nullptr));
}

/// Whether a file manager has shown it, which the bus may have to start.
bool isShownByFileManager(const std::string& uri) {
  const auto bus = sessionBus();
  if (!bus) return false;
  const std::array<const char*, 1> items{uri.c_str()};
  const GLibVariant reply(g_dbus_connection_call_sync(
      bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1",
      "ShowItems", g_variant_new("(@ass)", g_variant_new_strv(items.data(), items.size()), ""), nullptr,
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  return reply != nullptr;
}

void show(const std::string& path) {
  const auto uri = uriOf(path);
  if (uri.empty() || isShownByFileManager(uri)) return;
  launch(uriOf(std::string(FilePath::folder(path))));
}

class DesktopWorkspace final : public Workspace {
 public:
  void openFile(const std::string& path) override { openURL(uriOf(path)); }
  void openURL(const std::string& url) override {
    if (url.empty()) return;
    threads_.start([url] { launch(url); });
  }
  void reveal(const std::string& path) override {
    threads_.start([path] { show(path); });
  }

 private:
  QThreadPool threads_;  ///< waits for them at the end, so that what was asked for last still happens
};

}  // namespace

std::unique_ptr<Workspace> makeDesktopWorkspace() { return std::make_unique<DesktopWorkspace>(); }

}  // namespace Nimbrel
