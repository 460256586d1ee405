#include "Linux/X11/WindowFacts.h"

#include "Foundation/FilePath.h"

#include <QString>

#include <unistd.h>

#include <array>
#include <cstring>
#include <string_view>

namespace Nimbrel {

namespace {

constexpr std::uint32_t longestText = 4096;
constexpr std::string_view entryExtension = ".desktop";

struct Property {
  xcb_atom_t type = XCB_ATOM_NONE;
  std::string bytes;
};

/// A question that is under way: all of them are sent before the first answer is waited for.
class PropertyRequest {
 public:
  PropertyRequest(XcbConnection& connection, xcb_window_t window, xcb_atom_t name)
      : connection_(connection),
        cookie_(xcb_get_property(connection.get(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longestText / 4)) {}

  [[nodiscard]] Property wait() const {
    const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get(), cookie_, nullptr));
    if (!reply) return {};
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return {reply->type, std::string(bytes, static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))};
  }
  /// The number, or 0.
  [[nodiscard]] std::uint32_t waitForNumber() const {
    const auto property = wait();
    std::uint32_t number = 0;
    if (property.bytes.size() >= sizeof number) std::memcpy(&number, property.bytes.data(), sizeof number);
    return number;
  }
  [[nodiscard]] std::string waitForText() const {
    const auto property = wait();
    const auto size = static_cast<qsizetype>(property.bytes.size());
    const bool isLatin = property.type == XCB_ATOM_STRING;
    return (isLatin ? QString::fromLatin1(property.bytes.data(), size) : QString::fromUtf8(property.bytes.data(), size))
        .toStdString();
  }

 private:
  XcbConnection& connection_;
  xcb_get_property_cookie_t cookie_;
};

std::string thisMachine() {
  std::array<char, 256> name{};
  ::gethostname(name.data(), name.size() - 1);
  return name.data();
}

/// Some programs give a path, and some the name of the file.
std::string entryID(const std::string& entry) {
  auto id = std::string(FilePath::lastComponent(entry));
  if (id.ends_with(entryExtension)) id.resize(id.size() - entryExtension.size());
  return id;
}

}  // namespace

std::optional<xcb_window_t> activeWindow(XcbConnection& connection) {
  const auto name = connection.atom("_NET_ACTIVE_WINDOW");
  const auto window = PropertyRequest(connection, connection.root(), name).waitForNumber();
  return window == XCB_WINDOW_NONE ? std::nullopt : std::optional(window);
}

WindowFacts factsOf(XcbConnection& connection, xcb_window_t window) {
  const auto request = [&](std::string_view name) {
    return PropertyRequest(connection, window, connection.atom(name));
  };
  const auto classes = request("WM_CLASS");
  const auto title = request("_NET_WM_NAME");
  const auto oldTitle = request("WM_NAME");
  const auto process = request("_NET_WM_PID");
  const auto machine = request("WM_CLIENT_MACHINE");
  const auto gtkID = request("_GTK_APPLICATION_ID");
  const auto kdeEntry = request("_KDE_NET_WM_DESKTOP_FILE");

  WindowFacts facts;
  const auto names = classes.waitForText();
  const auto end = names.find('\0');
  facts.instanceName = names.substr(0, end);
  if (end != std::string::npos) facts.className = names.substr(end + 1, names.find('\0', end + 1) - end - 1);
  facts.title = title.waitForText();
  const auto plainTitle = oldTitle.waitForText();
  if (facts.title.empty()) facts.title = plainTitle;
  const auto number = static_cast<pid_t>(process.waitForNumber());
  const auto host = machine.waitForText();
  if (host.empty() || host == thisMachine()) facts.process = number;
  const auto applicationID = gtkID.waitForText();
  const auto entry = kdeEntry.waitForText();
  facts.desktopEntry = entryID(entry.empty() ? applicationID : entry);
  return facts;
}

}  // namespace Nimbrel
