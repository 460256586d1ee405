#pragma once

#include "Store/Store.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace Nimbrel {

/// What the launcher offers to do beside opening the application, by the names that its desktop entry gives to these
/// actions. The captures are there from the beginning. Main thread.
class DesktopActions {
 public:
  /// `token` is what the desktop gave for a window to come to the front; may be empty.
  using Action = std::function<void(const std::string& token)>;

  /// The store must outlive it.
  explicit DesktopActions(Store& store);

  /// From now on that is what is done under the name.
  void add(const std::string& name, Action action) { actions_[name] = std::move(action); }

  /// False, and nothing is done, where there is none of that name.
  bool run(const std::string& name, const std::string& token) const;

 private:
  std::map<std::string, Action, std::less<>> actions_;
};

}  // namespace Nimbrel
