#pragma once

#include "Platform/ScreenCaptureTool.h"

#include <QPointer>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A program for captures that ends when a test says so, and remembers what it was asked.
class FakeScreenCaptureTool final : public ScreenCaptureTool {
 public:
  [[nodiscard]] Result<std::unique_ptr<RunningCapture>> launch(QObject* context, std::vector<std::string> arguments,
                                                               Then then) override;

  /// The file that the last run is to write.
  [[nodiscard]] const std::string& path() const { return launched.back().back(); }
  /// As if the last run had ended.
  void end(int exitStatus);

  std::vector<std::vector<std::string>> launched;  ///< each run, with its arguments
  std::optional<Error> refusal;                    ///< why nothing can be started; absent while it can
  [[nodiscard]] int interrupts() const { return *interrupts_; }
  /// How many runs are held by somebody who could interrupt them.
  [[nodiscard]] int held() const { return *held_; }

 private:
  std::shared_ptr<int> interrupts_ = std::make_shared<int>(0);
  std::shared_ptr<int> held_ = std::make_shared<int>(0);
  QPointer<QObject> context_;
  Then then_;
};

}  // namespace Nimbrel::Testing
