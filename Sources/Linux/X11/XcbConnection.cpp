#include "Linux/X11/XcbConnection.h"

#include <QSocketNotifier>

#include <csignal>
#include <cstdint>

namespace Nimbrel {

namespace {

xcb_window_t rootOf(xcb_connection_t* connection, int screenNumber) {
  auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
  while (screenNumber-- > 0 && screen.rem > 1) xcb_screen_next(&screen);
  return screen.rem > 0 ? screen.data->root : 0;
}

/// The library writes to a server that has just gone away without asking not to be killed for it.
void ignoreBrokenPipes() {
  struct sigaction action {};
  if (::sigaction(SIGPIPE, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) ::signal(SIGPIPE, SIG_IGN);
}

}  // namespace

XcbConnection::XcbConnection() = default;
XcbConnection::~XcbConnection() = default;

bool XcbConnection::isUp() {
  if (!isTried_) connectToServer();
  return connection_ != nullptr && xcb_connection_has_error(connection_.get()) == 0;
}

void XcbConnection::connectToServer() {
  isTried_ = true;
  ignoreBrokenPipes();
  int screenNumber = 0;
  // Never null: what could not be connected has to be disconnected too.
  connection_.reset(xcb_connect(nullptr, &screenNumber));
  if (xcb_connection_has_error(connection_.get()) != 0) return;
  root_ = rootOf(connection_.get(), screenNumber);
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &XcbConnection::readEvents);
}

xcb_atom_t XcbConnection::atom(std::string_view name) {
  if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
  const auto cookie = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
  if (!reply) return XCB_ATOM_NONE;
  return atoms_.emplace(name, reply->atom).first->second;
}

void XcbConnection::flush() {
  xcb_flush(get());
  QMetaObject::invokeMethod(this, &XcbConnection::readEvents, Qt::QueuedConnection);
}

void XcbConnection::readEvents() {
  if (!notifier_) return;
  while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(get())}) Q_EMIT eventCame(*event);
  if (xcb_connection_has_error(get()) == 0) return;
  // Its socket stays readable for ever.
  notifier_->setEnabled(false);
  notifier_.release()->deleteLater();
  Q_EMIT lost();
}

}  // namespace Nimbrel
