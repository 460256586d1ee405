#pragma once

#include <QColor>

#include <functional>
#include <optional>

namespace Nimbrel {

/// How the desktop wants applications to look. What it does not tell is absent.
struct Appearance {
  enum class Scheme { Light, Dark };

  std::optional<Scheme> scheme;
  std::optional<QColor> accent;  ///< opaque
  bool hasHighContrast = false;

  bool operator==(const Appearance&) const = default;
};

/// Tells how the desktop wants applications to look, also while they run. Main thread.
class DesktopAppearance {
 public:
  using Callback = std::function<void(const Appearance&)>;

  virtual ~DesktopAppearance() = default;

  /// What is known so far; the desktop may take its time to answer the first observe().
  [[nodiscard]] virtual Appearance current() const = 0;

  /// From now on `onChange` is called with each appearance that differs from the one before, in a later turn of the
  /// event loop, in place of any former callback. An empty one ends it.
  virtual void observe(Callback onChange) = 0;
};

/// Where the desktop does not tell.
class NullDesktopAppearance final : public DesktopAppearance {
 public:
  [[nodiscard]] Appearance current() const override { return {}; }
  void observe(Callback) override {}
};

}  // namespace Nimbrel
