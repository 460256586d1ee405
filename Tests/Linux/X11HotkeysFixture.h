#pragma once

#include "Linux/X11/X11Hotkeys.h"
#include "Support/DesktopSession.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>

namespace Nimbrel::Testing {

/// One program that wants combinations, with a connection of its own to the server.
class HotkeyClient {
 public:
  using Action = HotkeyAction;

  HotkeyClient() {
    hotkeys_->observe(
        {.pressed = [this](Action action) { ++presses_[action]; },
         .failed = [this](Action action, const HotkeyFailure& failure) { failures_.emplace(action, failure); }});
    // After those who look for combinations, so that what is counted has been judged.
    QObject::connect(connection_.get(), &XcbConnection::eventCame, &context_, [this](const xcb_generic_event_t& event) {
      if (event.response_type == XCB_KEY_PRESS)
        ++keysTold_[reinterpret_cast<const xcb_key_press_event_t&>(event).detail];
    });
  }

  /// Why it could not be had; absent when it is held.
  std::optional<HotkeyFailure> hold(Action action) {
    failures_.erase(action);
    hotkeys_->hold(action);
    return failure(action);
  }
  void release(Action action) { hotkeys_->release(action); }
  [[nodiscard]] std::optional<HotkeyFailure> failure(Action action) const {
    const auto found = failures_.find(action);
    return found == failures_.end() ? std::nullopt : std::optional(found->second);
  }
  [[nodiscard]] int presses(Action action = Action::capture) const { return countOf(presses_, action); }
  [[nodiscard]] bool comesToHear(int count, Action action = Action::capture) const {
    return waitUntil([&] { return presses(action) == count; });
  }
  /// How often the server has told of that key, whatever else was held and whether it was repeated or pressed.
  [[nodiscard]] int timesTold(int key) const { return countOf(keysTold_, key); }
  [[nodiscard]] XcbConnection& connection() const { return *connection_; }

 private:
  template <class Key>
  [[nodiscard]] static int countOf(const std::map<Key, int>& counts, Key key) {
    const auto found = counts.find(key);
    return found == counts.end() ? 0 : found->second;
  }

  std::shared_ptr<XcbConnection> connection_ = std::make_shared<XcbConnection>();
  std::unique_ptr<HotkeyService> hotkeys_ = makeX11Hotkeys(connection_);
  std::map<Action, int> presses_;
  std::map<Action, HotkeyFailure> failures_;
  std::map<int, int> keysTold_;
  QObject context_;
};

/// A real X server, whose keys are pressed by programs of their own.
class X11HotkeysFixture : public ::testing::Test {
 protected:
  using Action = HotkeyAction;

  /// The keys of the row of digits by their numbers, which are the same for all layouts; and the space bar.
  static constexpr int keyOfThree = 12;
  static constexpr int keyOfFive = 14;
  static constexpr int spaceBar = 65;
  static constexpr std::uint16_t combination = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;

  X11HotkeysFixture() { run(QStringLiteral("setxkbmap us")); }

  /// Another program, run to its end.
  static void run(const QString& name, const QStringList& words) {
    QProcess program;
    program.start(name, words);
    ASSERT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; })) << name.toStdString();
    EXPECT_EQ(program.exitCode(), 0) << name.toStdString() << program.readAllStandardError().toStdString();
  }
  static void run(const QString& words) {
    auto list = words.split(QLatin1Char(' '));
    const auto name = list.takeFirst();
    run(name, list);
  }
  static void press(const QString& keys) { run(QStringLiteral("xdotool key ") + keys); }
  static void press(int key) { press(QStringLiteral("ctrl+shift+%1").arg(key)); }

  DesktopSession session_;
  HotkeyClient client_;
};

}  // namespace Nimbrel::Testing
