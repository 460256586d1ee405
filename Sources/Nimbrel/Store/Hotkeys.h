#pragma once

#include "Platform/Hotkeys.h"

#include <QObject>

#include <functional>
#include <map>
#include <set>

namespace Nimbrel {

/// The key combinations of this process and what they start. One that cannot be had leaves a line in the log and
/// nothing else. Main thread.
class Hotkeys final : public QObject {
  Q_OBJECT

 public:
  using Action = HotkeyAction;
  using Callback = std::function<void()>;

  /// `service` is borrowed and must outlive the object, which lets go of everything at its end.
  explicit Hotkeys(HotkeyService& service);
  ~Hotkeys() override;

  /// From now on a press of the combination calls `run`, in a turn of the event loop of its own. What is registered, or
  /// about to be, stays as it is, its callback too.
  void registerAction(Action action, Callback run);
  /// Gives the combination up; one that is not registered is left alone.
  void unregister(Action action);

  /// Once more for those that somebody else held when they were wanted. Who still cannot have one says nothing more.
  void tryAgain();

  /// Whether the combination is held, or the desktop has not yet said that it cannot be.
  [[nodiscard]] bool isRegistered(Action action) const { return refs_.contains(action); }

 private:
  void start(Action action, Callback run);
  void hearPress(Action action);
  void hearFailure(Action action, const HotkeyFailure& failure);

  HotkeyService& service_;
  std::set<Action> refs_;
  std::map<Action, Callback> handlers_;
  std::map<Action, Callback> waiting_;  ///< for whoever holds it to let it go
  std::set<Action> retried_;            ///< and told in the log before
};

}  // namespace Nimbrel
