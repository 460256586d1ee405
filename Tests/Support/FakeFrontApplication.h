#pragma once

#include "Platform/FrontApplication.h"

#include <utility>

namespace Nimbrel::Testing {

/// Applications that come to the front when a test says so.
class FakeFrontApplication final : public FrontApplication {
 public:
  [[nodiscard]] std::optional<Application> current() const override { return application; }
  void observe(Callback onActivation) override { onActivation_ = std::move(onActivation); }

  void activate(const Application& next) {
    application = next;
    if (onActivation_) onActivation_(next);
  }
  [[nodiscard]] bool isObserved() const { return onActivation_ != nullptr; }

  std::optional<Application> application;

 private:
  Callback onActivation_;
};

}  // namespace Nimbrel::Testing
