#include "Linux/Desktop/FileMail.h"

#include "Foundation/Log.h"
#include "Linux/Desktop/DetachedProgram.h"
#include "Linux/Desktop/FileUri.h"
#include "Linux/Desktop/GLibHandles.h"
#include "Linux/Desktop/SessionBusConnection.h"
#include "Linux/Files/FileDescriptor.h"

#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include <fcntl.h>

namespace Nimbrel::FileMail {

namespace {

constexpr auto script = "xdg-email";

/// Whether the portal has taken it.
bool composeByPortal(const std::string& path) {
  const auto bus = connectToSessionBus();
  if (!bus) return false;
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.isOpen()) return false;
  const GLibObject<GUnixFDList> files(g_unix_fd_list_new());
  const int handle = g_unix_fd_list_append(files.get(), file.number(), nullptr);
  if (handle < 0) return false;
  GVariantBuilder attachments;
  g_variant_builder_init(&attachments, G_VARIANT_TYPE("ah"));
  g_variant_builder_add(&attachments, "h", handle);
  GVariantBuilder options;
  g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&options, "{sv}", "attachment_fds", g_variant_builder_end(&attachments));
  const GLibVariant reply(g_dbus_connection_call_with_unix_fd_list_sync(
      bus.get(), "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Email",
      "ComposeEmail", g_variant_new("(s@a{sv})", "", g_variant_builder_end(&options)), nullptr, G_DBUS_CALL_FLAGS_NONE,
      -1, files.get(), nullptr, nullptr, nullptr));
  return reply != nullptr;
}

/// Whether the script was started.
bool composeByScript(const std::string& path) {
  if (!GLibText(g_find_program_in_path(script))) return false;
  return startDetached(script, {"--attach", path});
}

}  // namespace

void compose(const std::string& path) {
  if (composeByPortal(path) || composeByScript(path)) return;
  const GLibText escaped(g_uri_escape_string(fileUri(path).c_str(), nullptr, FALSE));
  const auto address = std::string("mailto:?attach=") + escaped.get();
  GError* raised = nullptr;
  if (g_app_info_launch_default_for_uri(address.c_str(), nullptr, &raised) != FALSE) return;
  const GLibError error(raised);
  Log::write("No program for e-mail: " + std::string(error ? error->message : "no reason given"));
}

}  // namespace Nimbrel::FileMail
