#pragma once

#include "Platform/WindowFocus.h"

#include <QWindow>

#include <vector>

namespace Nimbrel::Testing {

/// A session that tells what a test says, and remembers who was given the keyboard.
class FakeWindowFocus final : public WindowFocus {
 public:
  [[nodiscard]] std::optional<FocusedWindow> current() const override { return front; }
  void giveTo(std::uint64_t id) override { given.push_back(id); }
  void take(QWindow& window) override { taken.push_back(&window); }

  std::optional<FocusedWindow> front;
  std::vector<std::uint64_t> given;
  std::vector<const QWindow*> taken;  ///< of ours
};

}  // namespace Nimbrel::Testing
