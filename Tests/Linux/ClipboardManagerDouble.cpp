// A clipboard manager of an X11 desktop: says "ready" once it is one, fetches everything that the owner of the
// clipboard offers when it is asked to save that, takes the clipboard over, answers, and says "saved". With "refuse" it
// says "refused" instead and does nothing else. Stays until killed.

#include <xcb/xcb.h>
#include <xcb/xproto.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

template <class T>
using Owned = std::unique_ptr<T, decltype([](T* thing) { std::free(thing); })>;

void say(const char* line) {
  std::puts(line);
  std::fflush(stdout);
}

class Manager {
 public:
  explicit Manager(bool refuses) : refuses_(refuses) {
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data;
    xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(xcb_, window_, atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
    // Answered once the server has done what stands before.
    const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr));
    say("ready");
  }

  void run() {
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(xcb_)}) {
      const auto type = event->response_type & 0x7F;
      if (type == XCB_SELECTION_REQUEST) hear(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
      if (type == XCB_SELECTION_NOTIFY) take(reinterpret_cast<const xcb_selection_notify_event_t&>(*event));
      xcb_flush(xcb_);
    }
  }

 private:
  struct Content {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::uint8_t format = 8;
    std::string bytes;
  };

  xcb_atom_t atom(std::string_view name) {
    const auto cookie = xcb_intern_atom(xcb_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    return Owned<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(xcb_, cookie, nullptr))->atom;
  }

  void hear(const xcb_selection_request_event_t& request) {
    if (request.selection == atom("CLIPBOARD")) return serve(request);
    if (request.target != atom("SAVE_TARGETS") || refuses_) {
      answer(request, XCB_ATOM_NONE);
      xcb_flush(xcb_);
      return say("refused");
    }
    asked_ = request;
    fetch(atom("TARGETS"));
  }

  void fetch(xcb_atom_t target) {
    xcb_convert_selection(xcb_, window_, atom("CLIPBOARD"), target, atom("FETCHED"), XCB_CURRENT_TIME);
  }

  void take(const xcb_selection_notify_event_t& notice) {
    auto content = notice.property == XCB_ATOM_NONE ? Content() : fetched();
    if (notice.target == atom("TARGETS")) {
      const auto* first = reinterpret_cast<const xcb_atom_t*>(content.bytes.data());
      wanted_.assign(first, first + content.bytes.size() / sizeof(xcb_atom_t));
      for (const auto* name : {"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS"}) std::erase(wanted_, atom(name));
    } else if (notice.property != XCB_ATOM_NONE) {
      saved_[notice.target] = std::move(content);
    }
    if (wanted_.empty()) return finish();
    const auto next = wanted_.back();
    wanted_.pop_back();
    fetch(next);
  }

  Content fetched() {
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        xcb_, xcb_get_property(xcb_, 1, window_, atom("FETCHED"), XCB_ATOM_ANY, 0, UINT32_MAX / 4), nullptr));
    return {reply->type, reply->format,
            std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))};
  }

  void finish() {
    xcb_set_selection_owner(xcb_, window_, atom("CLIPBOARD"), XCB_CURRENT_TIME);
    answer(asked_, asked_.property);
    xcb_flush(xcb_);
    say("saved");
  }

  void serve(const xcb_selection_request_event_t& request) {
    Content content;
    if (request.target == atom("TARGETS")) {
      content = {XCB_ATOM_ATOM, 32, {}};
      for (const auto& [target, saved] : saved_) {
        content.bytes.append(reinterpret_cast<const char*>(&target), sizeof target);
      }
    } else if (const auto saved = saved_.find(request.target); saved != saved_.end()) {
      content = saved->second;
    } else {
      return answer(request, XCB_ATOM_NONE);
    }
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, content.type, content.format,
                        static_cast<std::uint32_t>(content.bytes.size() * 8 / content.format), content.bytes.data());
    answer(request, request.property);
  }

  void answer(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = property;
    xcb_send_event(xcb_, 0, request.requestor, 0, reinterpret_cast<const char*>(&notice));
  }

  bool refuses_;
  xcb_connection_t* xcb_ = xcb_connect(nullptr, nullptr);
  xcb_window_t window_ = xcb_generate_id(xcb_);
  xcb_selection_request_event_t asked_{};
  std::vector<xcb_atom_t> wanted_;
  std::map<xcb_atom_t, Content> saved_;
};

}  // namespace

int main(int argc, char** argv) {
  Manager(argc > 1 && std::string_view(argv[1]) == "refuse").run();
  return 0;
}
