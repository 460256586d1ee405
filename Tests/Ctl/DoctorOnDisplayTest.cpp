// nimbrelctl doctor on an X11 desktop.

#include "DoctorFixture.h"

#include "Linux/X11/X11Hotkeys.h"
#include "Support/DesktopSession.h"

#include <gmock/gmock.h>

#include <memory>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;

class DoctorOnDisplayTest : public Testing::DoctorFixture {
 protected:
  /// As another program does.
  void holdCapture() {
    other_ = makeX11Hotkeys(std::make_shared<XcbConnection>());
    other_->observe({.pressed = {}, .failed = [](HotkeyAction, const HotkeyFailure&) { FAIL(); }});
    other_->hold(HotkeyAction::capture);
  }

  Testing::DesktopSession session_;
  std::unique_ptr<HotkeyService> other_;
};

TEST_F(DoctorOnDisplayTest, FindsTheSessionAndFreeHotkeys) {
  const auto found = findings();
  EXPECT_TRUE(found.at("desktop session").isPresent);
  EXPECT_EQ(found.at("desktop session").advice, "X11");
  EXPECT_TRUE(found.at("hotkey ⌃⇧5").isPresent);
  EXPECT_TRUE(found.at("hotkey ⌃⇧Space").isPresent);
  EXPECT_FALSE(found.at("tray").isPresent);
  EXPECT_THAT(found.at("portal Screenshot").advice, HasSubstr("not needed"));
}

TEST_F(DoctorOnDisplayTest, ATrayOfTheServerIsFoundWhereTheBusHasNone) {
  XcbConnection panel;
  ASSERT_TRUE(panel.isUp());
  const auto window = xcb_generate_id(panel.get());
  xcb_create_window(panel.get(), XCB_COPY_FROM_PARENT, window, panel.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  const auto owning =
      xcb_set_selection_owner_checked(panel.get(), window, panel.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
  const XcbOwned<xcb_generic_error_t> refusal(xcb_request_check(panel.get(), owning));
  ASSERT_FALSE(refusal);
  const auto found = findings();
  EXPECT_TRUE(found.at("tray").isPresent);
  EXPECT_EQ(found.at("tray").advice, "on the X server");
}

TEST_F(DoctorOnDisplayTest, LooksAndKeepsNothing) {
  EXPECT_TRUE(findings().at("hotkey ⌃⇧5").isPresent);
  EXPECT_TRUE(findings().at("hotkey ⌃⇧5").isPresent);
  // Fails the test where it is not to be had.
  holdCapture();
}

TEST_F(DoctorOnDisplayTest, AHotkeyThatAnotherProgramHasIsMissing) {
  holdCapture();
  const auto found = findings();
  EXPECT_FALSE(found.at("hotkey ⌃⇧5").isPresent);
  EXPECT_THAT(found.at("hotkey ⌃⇧5").advice, HasSubstr("another program"));
  EXPECT_TRUE(found.at("hotkey ⌃⇧Space").isPresent);
}

TEST_F(DoctorOnDisplayTest, AHotkeyThatIsSwitchedOnMayBeInUse) {
  home_.open(ProcessRole::tool)->settings().captureHotkey.set(true);
  holdCapture();
  EXPECT_TRUE(findings().at("hotkey ⌃⇧5").isPresent);
}

TEST_F(DoctorOnDisplayTest, AServerThatDoesNotAnswerIsSaid) {
  session_.kill();
  const auto found = findings();
  EXPECT_FALSE(found.at("hotkey ⌃⇧5").isPresent);
  EXPECT_THAT(found.at("hotkey ⌃⇧5").advice, HasSubstr("does not answer"));
}

}  // namespace
}  // namespace Nimbrel
