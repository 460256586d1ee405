#pragma once

#include "Platform/Hotkeys.h"

#include <map>
#include <utility>
#include <vector>

namespace Nimbrel::Testing {

/// The key combinations of a desktop, shared by the fakes of all processes that a test has.
struct FakeKeyboard {
  std::map<HotkeyAction, const void*> holders;
};

/// Combinations that are pressed when a test says so, and that fail as it says; it remembers what it was asked.
class FakeHotkeyService final : public HotkeyService {
 public:
  FakeHotkeyService() = default;
  explicit FakeHotkeyService(FakeKeyboard& keyboard) : keyboard_(keyboard) {}

  void observe(Events events) override { events_ = std::move(events); }
  void hold(HotkeyAction action) override {
    asked.push_back(action);
    if (const auto failure = failures.find(action); failure != failures.end()) return fail(action, failure->second);
    const auto [holder, isNew] = keyboard_.holders.emplace(action, this);
    if (!isNew && holder->second != this) fail(action, taken);
  }
  void release(HotkeyAction action) override {
    released.push_back(action);
    if (isHeld(action)) keyboard_.holders.erase(action);
  }

  void press(HotkeyAction action) {
    if (events_.pressed) events_.pressed(action);
  }
  /// As when it is lost, or an answer comes late.
  void fail(HotkeyAction action, const HotkeyFailure& failure) {
    if (isHeld(action)) keyboard_.holders.erase(action);
    if (events_.failed) events_.failed(action, failure);
  }
  [[nodiscard]] bool isHeld(HotkeyAction action) const {
    const auto holder = keyboard_.holders.find(action);
    return holder != keyboard_.holders.end() && holder->second == this;
  }
  [[nodiscard]] bool isObserved() const { return events_.pressed != nullptr; }

  static constexpr HotkeyFailure taken{.error = 10, .isTemporary = true};
  std::map<HotkeyAction, HotkeyFailure> failures;  ///< of what is asked for from now on
  std::vector<HotkeyAction> asked;
  std::vector<HotkeyAction> released;

 private:
  FakeKeyboard own_;
  FakeKeyboard& keyboard_ = own_;
  Events events_;
};

}  // namespace Nimbrel::Testing
