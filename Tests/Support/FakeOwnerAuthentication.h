#pragma once

#include "Platform/OwnerAuthentication.h"

#include <QPointer>

#include <string>
#include <utility>
#include <vector>

namespace Nimbrel::Testing {

/// An owner who answers when a test says so, and who remembers what was asked for.
class FakeOwnerAuthentication final : public OwnerAuthentication {
 public:
  void setPrompt(CredentialPrompt* newPrompt) override { prompt = newPrompt; }
  [[nodiscard]] bool canEvaluate() const override { return isThere; }
  void evaluate(QObject* context, const std::string& reason, Then then) override {
    reasons.push_back(reason);
    context_ = context;
    then_ = std::move(then);
  }

  void decide(bool granted) {
    const auto then = std::exchange(then_, {});
    if (then && context_) then(granted);
  }
  [[nodiscard]] bool isAsked() const { return then_ != nullptr; }

  bool isThere = true;
  CredentialPrompt* prompt = nullptr;
  std::vector<std::string> reasons;  ///< one for each authentication

 private:
  QPointer<QObject> context_;
  Then then_;
};

}  // namespace Nimbrel::Testing
