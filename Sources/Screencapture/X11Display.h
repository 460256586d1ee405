#pragma once

#include "Foundation/Result.h"
#include "Screencapture/XcbOwned.h"

#include <QImage>
#include <QRect>

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Nimbrel::Screencapture {

/// A connection to the X server that the environment names. All coordinates are pixels of its root window, whatever the
/// user's scale is. Main thread.
class X11Display {
 public:
  [[nodiscard]] static Result<std::unique_ptr<X11Display>> open();

  /// What to say when the server stops to answer.
  [[nodiscard]] static Error lossOfServer() { return Error{"The display has gone"}; }

  [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }
  [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
  [[nodiscard]] xcb_window_t root() const { return screen_->root; }
  /// All of the root window.
  [[nodiscard]] QRect bounds() const;
  [[nodiscard]] bool isUp() const { return xcb_connection_has_error(get()) == 0; }
  void flush() const { xcb_flush(get()); }

  /// How the pixels of a window or pixmap of that depth lie in memory; absent for such as this program cannot read.
  [[nodiscard]] std::optional<QImage::Format> pixelFormat(std::uint8_t depth) const;

  /// The number that the server has for a name; 0 when it could not be asked.
  [[nodiscard]] xcb_atom_t atom(std::string_view name) const;

  /// A property's numbers of 32 bits, or its text; empty when the window or the property is not there.
  [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, std::string_view property) const;
  [[nodiscard]] std::string text(xcb_window_t window, std::string_view property) const;

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };
  using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

  X11Display(Connection connection, const xcb_screen_t* screen) : connection_(std::move(connection)), screen_(screen) {}

  [[nodiscard]] XcbOwned<xcb_get_property_reply_t> property(xcb_window_t window, std::string_view name) const;

  Connection connection_;
  const xcb_screen_t* screen_;
  mutable std::map<std::string, xcb_atom_t, std::less<>> atoms_;  ///< those that were asked for
};

}  // namespace Nimbrel::Screencapture
