#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

/// What whoever starts the program wants of it: to see it, to have files opened, or one of its actions. A plain value.
struct StartRequest {
  enum class Kind { Activate, Open, Action };

  Kind kind = Kind::Activate;
  std::vector<std::string> files;  ///< absolute paths, as bytes; of Open
  std::string action;              ///< the name that the launcher has for it; of Action
  std::string activationToken;     ///< what the desktop gave for a window to come to the front; may be empty

  bool operator==(const StartRequest&) const = default;
};

/// Sees to it that one process of a kind runs in a session, and hears what others that were started want of it. Main
/// thread only.
class SingleInstance {
 public:
  enum class Place {
    First,       ///< this process is the one
    HandedOver,  ///< another one is, and has taken the request
    Unanswered,  ///< another one is, and does not answer
  };
  using Handler = std::function<void(const StartRequest& request)>;

  virtual ~SingleInstance() = default;

  /// To be called once. Waits for the other process if there is one, for some seconds at most. The place is kept for
  /// the life of this object.
  [[nodiscard]] virtual Place claim(const StartRequest& request) = 0;

  /// Calls `handler`, in turns of the event loop, with what others want from now on and have wanted since claim().
  virtual void listen(Handler handler) = 0;
};

}  // namespace Nimbrel
