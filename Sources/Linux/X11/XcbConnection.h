#pragma once

#include <QObject>

#include <xcb/xcb.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>

class QSocketNotifier;

namespace Nimbrel {

/// What the library hands out with malloc().
template <class T>
using XcbOwned = std::unique_ptr<T, decltype([](T* thing) { std::free(thing); })>;

/// A connection of our own to the X server, beside that of the windows, which is set up for its own ends: what it wants
/// to hear of the root window would be overwritten. Made when it is first needed, and gone for good when the server is.
/// For all services that need one. Main thread only.
class XcbConnection : public QObject {
  Q_OBJECT
 public:
  XcbConnection();
  ~XcbConnection() override;

  /// Whether there is a server to talk to; connects the first time.
  [[nodiscard]] bool isUp();

  // While it is up

  [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }
  [[nodiscard]] xcb_window_t root() const { return root_; }
  /// The number that the server has for a name; 0 when it could not be asked.
  [[nodiscard]] xcb_atom_t atom(std::string_view name);
  /// Sends what was written, and hands out events that came while a reply was waited for, which nothing else would.
  void flush();

 Q_SIGNALS:
  void eventCame(const xcb_generic_event_t& event);
  void lost();

 private:
  void connectToServer();
  void readEvents();

  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };
  bool isTried_ = false;
  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  xcb_window_t root_ = 0;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::map<std::string, xcb_atom_t, std::less<>> atoms_;
};

}  // namespace Nimbrel
