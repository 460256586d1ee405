#include "Store/Hotkeys.h"

#include "Foundation/Log.h"

#include <string>
#include <utility>

namespace Nimbrel {

Hotkeys::Hotkeys(HotkeyService& service) : service_(service) {
  service_.observe({.pressed = [this](Action action) { hearPress(action); },
                    .failed = [this](Action action, const HotkeyFailure& failure) { hearFailure(action, failure); }});
}

Hotkeys::~Hotkeys() {
  service_.observe({});
  for (const auto action : refs_) service_.release(action);
}

void Hotkeys::registerAction(Action action, Callback run) {
  if (refs_.contains(action)) return;
  waiting_.erase(action);
  retried_.erase(action);
  start(action, std::move(run));
}

void Hotkeys::start(Action action, Callback run) {
  refs_.insert(action);
  handlers_.insert_or_assign(action, std::move(run));
  // It may fail before this returns.
  service_.hold(action);
}

void Hotkeys::unregister(Action action) {
  if (refs_.erase(action) > 0) service_.release(action);
  handlers_.erase(action);
  waiting_.erase(action);
  retried_.erase(action);
}

void Hotkeys::tryAgain() {
  for (auto& [action, run] : std::exchange(waiting_, {})) {
    retried_.insert(action);
    start(action, std::move(run));
  }
}

void Hotkeys::hearPress(Action action) {
  // Whoever is called may do anything, which the service that tells of it need not bear.
  const auto call = [this, action] {
    const auto handler = handlers_.find(action);
    if (handler == handlers_.end()) return;
    const auto run = handler->second;
    run();
  };
  QMetaObject::invokeMethod(this, call, Qt::QueuedConnection);
}

void Hotkeys::hearFailure(Action action, const HotkeyFailure& failure) {
  refs_.erase(action);
  auto handler = handlers_.extract(action);
  if (!retried_.contains(action)) {
    Log::write("Nimbrel: could not register " + std::string(hotkeyName(action)) + " (error " +
               std::to_string(failure.error) + ")");
  }
  if (failure.isTemporary && !handler.empty()) waiting_.insert(std::move(handler));
}

}  // namespace Nimbrel
