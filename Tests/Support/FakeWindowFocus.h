#pragma once

#include "Platform/WindowFocus.h"

#include <vector>

namespace Nimbrel::Testing {

/// A session that tells what a test says, and remembers who was given the keyboard.
class FakeWindowFocus final : public WindowFocus {
 public:
  [[nodiscard]] std::optional<FocusedWindow> current() const override { return front; }
  void giveTo(std::uint64_t id) override { given.push_back(id); }

  std::optional<FocusedWindow> front;
  std::vector<std::uint64_t> given;
};

}  // namespace Nimbrel::Testing
