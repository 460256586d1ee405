// The icon in the tray of an X server, which is one of the tests' own.

#include "Linux/Factory.h"
#include "Linux/X11/XcbConnection.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QIcon>
#include <QPixmap>
#include <QProcess>

#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::waitUntil;

/// A tray without a panel: it takes icons in by the protocol, side by side into its own window.
class TrayDouble {
 public:
  TrayDouble() {
    EXPECT_TRUE(connection_.isUp());
    auto* server = connection_.get();
    window_ = xcb_generate_id(server);
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window_, connection_.root(), 400, 0, 64, 32, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    xcb_map_window(server, window_);
    xcb_set_selection_owner(server, window_, connection_.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    announce();
    QObject::connect(&connection_, &XcbConnection::eventCame, &connection_,
                     [this](const xcb_generic_event_t& event) { hear(event); });
    connection_.flush();
  }
  ~TrayDouble() {
    // Icons go back to where they came from, as the protocol has it.
    if (icon_) xcb_reparent_window(connection_.get(), *icon_, connection_.root(), 0, 0);
    xcb_destroy_window(connection_.get(), window_);
    xcb_flush(connection_.get());
  }
  TrayDouble(const TrayDouble&) = delete;
  TrayDouble& operator=(const TrayDouble&) = delete;

  /// The window of the icon, while there is one.
  [[nodiscard]] std::optional<xcb_window_t> icon() const { return icon_; }

 private:
  void announce() {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = connection_.root();
    event.type = connection_.atom("MANAGER");
    event.data.data32[1] = connection_.atom("_NET_SYSTEM_TRAY_S0");
    event.data.data32[2] = window_;
    std::array<char, sizeof event> bytes{};
    std::memcpy(bytes.data(), &event, sizeof event);
    xcb_send_event(connection_.get(), 0, connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, bytes.data());
  }

  void hear(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (kind == XCB_CLIENT_MESSAGE) {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
      constexpr std::uint32_t dock = 0;
      if (message.type != connection_.atom("_NET_SYSTEM_TRAY_OPCODE") || message.data.data32[1] != dock) return;
      icon_ = message.data.data32[2];
      xcb_reparent_window(connection_.get(), *icon_, window_, 0, 0);
      xcb_map_window(connection_.get(), *icon_);
      // Only from now on the server tells of its end, whatever its owner does.
      const XcbOwned<xcb_get_input_focus_reply_t> done(
          xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
    } else if (kind == XCB_DESTROY_NOTIFY) {
      if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == icon_) icon_.reset();
    }
  }

  XcbConnection connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::optional<xcb_window_t> icon_;
};

class X11TrayTest : public ::testing::Test {
 protected:
  X11TrayTest() {
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::red);
    tray_->setLook(QIcon(pixmap), QStringLiteral("Nimbrel"));
    tray_->onActivated([this](const TrayIcon::Activation& activation) { activations_.push_back(activation); });
    tray_->observeHost([this](bool isThere) { told_.push_back(isThere); });
  }

  std::unique_ptr<TrayIcon> tray_ = makeTrayIcon();
  std::vector<TrayIcon::Activation> activations_;
  std::vector<bool> told_;
};

TEST_F(X11TrayTest, TheIconEntersATrayThatComesAndOneThatComesBack) {
  tray_->setVisible(true);
  ASSERT_TRUE(waitUntil([this] { return !told_.empty(); }));
  EXPECT_THAT(told_, ElementsAre(false));
  {
    const TrayDouble tray;
    EXPECT_TRUE(waitUntil([&] { return tray.icon().has_value(); }));
    EXPECT_THAT(told_, ElementsAre(false, true));
  }
  ASSERT_TRUE(waitUntil([this] { return told_.size() == 3; }));
  const TrayDouble tray;
  EXPECT_TRUE(waitUntil([&] { return tray.icon().has_value(); }));
  EXPECT_THAT(told_, ElementsAre(false, true, false, true));
}

TEST_F(X11TrayTest, TheIconLeavesWhenItIsHidden) {
  const TrayDouble tray;
  tray_->setVisible(true);
  ASSERT_TRUE(waitUntil([&] { return tray.icon().has_value(); }));
  tray_->setVisible(false);
  EXPECT_TRUE(waitUntil([&] { return !tray.icon().has_value(); }));
}

TEST_F(X11TrayTest, AClickTellsWhereTheIconIs) {
  const TrayDouble tray;
  tray_->setVisible(true);
  ASSERT_TRUE(waitUntil([&] { return tray.icon().has_value(); }));
  const auto isClicked = [this] {
    QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QStringLiteral("408"),
                                                  QStringLiteral("8"), QStringLiteral("click"), QStringLiteral("1")});
    return waitUntil([this] { return !activations_.empty(); }, std::chrono::milliseconds(500));
  };
  // The icon is mapped some time after it is in the tray.
  ASSERT_TRUE(waitUntil(isClicked));
  EXPECT_TRUE(activations_.front().place.contains(408, 8));
}

}  // namespace
}  // namespace Nimbrel
