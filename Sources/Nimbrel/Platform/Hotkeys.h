#pragma once

#include <array>
#include <functional>
#include <string_view>
#include <utility>

namespace Nimbrel {

/// What the key combinations are for that work from everywhere in the desktop. They cannot be changed.
enum class HotkeyAction {
  capture,    ///< Control, Shift and the 5
  quickFind,  ///< Control, Shift and the space bar
};
inline constexpr std::array allHotkeyActions{HotkeyAction::capture, HotkeyAction::quickFind};

/// The combination as messages name it.
[[nodiscard]] constexpr std::string_view hotkeyName(HotkeyAction action) {
  return action == HotkeyAction::capture ? "⌃⇧5" : "⌃⇧Space";
}

/// Why a combination is not ours.
struct HotkeyFailure {
  /// Where the desktop has nobody to ask.
  static constexpr int notOffered = -1;

  int error = notOffered;    ///< what the desktop says, in numbers of its own: for the log
  bool isTemporary = false;  ///< as when another program holds it: a later try may do better
};

/// Key combinations of the whole desktop. Main thread only.
class HotkeyService {
 public:
  struct Events {
    /// A combination that is held was pressed: once, however long it stays so.
    std::function<void(HotkeyAction action)> pressed;
    /// A combination that was asked for cannot be had, or is lost: it is not held and not asked for any more. Comes
    /// within hold() or in any later turn of the event loop.
    std::function<void(HotkeyAction action, const HotkeyFailure& failure)> failed;
  };

  virtual ~HotkeyService() = default;

  /// Who hears of events from now on, in place of whoever did before; nobody, with empty ones.
  virtual void observe(Events events) = 0;

  /// Asks for a combination, until it fails or is released; again, it does nothing. Of all processes only one holds it.
  virtual void hold(HotkeyAction action) = 0;

  /// Gives it to whoever wants it; one that is not held is left alone.
  virtual void release(HotkeyAction action) = 0;
};

/// Where the desktop offers none.
class NullHotkeyService final : public HotkeyService {
 public:
  void observe(Events events) override { events_ = std::move(events); }
  void hold(HotkeyAction action) override {
    if (events_.failed) events_.failed(action, {});
  }
  void release(HotkeyAction) override {}

 private:
  Events events_;
};

}  // namespace Nimbrel
