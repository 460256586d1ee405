#pragma once

#include "Platform/WindowActivation.h"

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// Remembers which windows were to come to the front, and with which tokens.
class FakeWindowActivation final : public WindowActivation {
 public:
  struct Brought {
    const QWindow* window;
    std::string token;

    bool operator==(const Brought&) const = default;
  };

  void bringToFront(QWindow& window, const std::string& token) override {
    brought.push_back({&window, token});
    window.requestActivate();
  }

  std::vector<Brought> brought;
};

}  // namespace Nimbrel::Testing
