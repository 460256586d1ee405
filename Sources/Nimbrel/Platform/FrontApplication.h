#pragma once

#include <functional>
#include <optional>
#include <string>

namespace Nimbrel {

/// An application as the desktop knows it.
struct Application {
  std::string name;      ///< in the user's language
  std::string bundleID;  ///< the id of its desktop entry; empty when it has none

  bool operator==(const Application&) const = default;
};

/// Tells which application the user is working in. Main thread.
class FrontApplication {
 public:
  using Callback = std::function<void(const Application&)>;

  virtual ~FrontApplication() = default;

  /// The one in front now; absent when there is none, or when the session does not tell.
  [[nodiscard]] virtual std::optional<Application> current() const = 0;

  /// From now on `onActivation` is called for each application that comes to the front, in place of any former
  /// callback; the one in front already may be told as the first, so that none is missed. An empty one ends it.
  virtual void observe(Callback onActivation) = 0;
};

/// Where the session does not tell.
class NullFrontApplication final : public FrontApplication {
 public:
  [[nodiscard]] std::optional<Application> current() const override { return std::nullopt; }
  void observe(Callback) override {}
};

}  // namespace Nimbrel
