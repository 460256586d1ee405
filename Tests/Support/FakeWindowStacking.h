#pragma once

#include "Platform/WindowStacking.h"

#include <QWindow>

#include <vector>

namespace Nimbrel::Testing {

/// A desktop that does what a test says, and remembers which windows it was to keep above others and whether they were
/// shown already.
class FakeWindowStacking final : public WindowStacking {
 public:
  struct Kept {
    const QWindow* window;
    bool wasShown;

    bool operator==(const Kept&) const = default;
  };

  [[nodiscard]] bool canPlace() const override { return places; }
  [[nodiscard]] bool isComposited() const override { return composited; }
  void keepAbove(QWindow& window) override { kept.push_back({&window, window.isVisible()}); }

  bool places = true;
  bool composited = true;
  std::vector<Kept> kept;
};

}  // namespace Nimbrel::Testing
