#include "Linux/Desktop/TokenActivation.h"

namespace Nimbrel {

namespace {

class TokenActivation final : public WindowActivation {
 public:
  void bringToFront(QWindow& window, const std::string& token) override {
    // Where Qt looks for it, and takes it away from.
    if (!token.empty()) qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
    window.requestActivate();
  }
};

}  // namespace

std::unique_ptr<WindowActivation> makeTokenActivation() { return std::make_unique<TokenActivation>(); }

}  // namespace Nimbrel
