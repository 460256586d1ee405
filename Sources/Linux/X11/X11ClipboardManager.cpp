#include "Linux/X11/X11ClipboardManager.h"

#include <utility>

namespace Nimbrel {

X11ClipboardManager::X11ClipboardManager(std::shared_ptr<XcbConnection> connection)
    : connection_(std::move(connection)) {
  connect(connection_.get(), &XcbConnection::eventCame, this, &X11ClipboardManager::hear);
}

void X11ClipboardManager::save() {
  if (!connection_->isUp()) return;
  auto* xcb = connection_->get();
  if (window_ == XCB_WINDOW_NONE) {
    window_ = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window_, connection_->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  }
  // The property, which we do not set, could name some of the targets.
  xcb_convert_selection(xcb, window_, connection_->atom("CLIPBOARD_MANAGER"), connection_->atom("SAVE_TARGETS"),
                        connection_->atom("NIMBREL_SAVED_TARGETS"), XCB_CURRENT_TIME);
  connection_->flush();
}

void X11ClipboardManager::hear(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7F) != XCB_SELECTION_NOTIFY) return;
  const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
  // Without a manager the server itself answers so.
  if (answer.requestor == window_ && answer.property != XCB_ATOM_NONE) Q_EMIT saved();
}

}  // namespace Nimbrel
