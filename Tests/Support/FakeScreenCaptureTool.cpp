#include "Support/FakeScreenCaptureTool.h"

#include <gtest/gtest.h>

#include <utility>

namespace Nimbrel::Testing {

namespace {

class FakeRun final : public RunningCapture {
 public:
  FakeRun(std::shared_ptr<int> interrupts, std::shared_ptr<int> held)
      : interrupts_(std::move(interrupts)), held_(std::move(held)) {
    ++*held_;
  }
  ~FakeRun() override { --*held_; }
  FakeRun(const FakeRun&) = delete;
  FakeRun& operator=(const FakeRun&) = delete;

  void interrupt() override { ++*interrupts_; }

 private:
  std::shared_ptr<int> interrupts_;
  std::shared_ptr<int> held_;
};

}  // namespace

Result<std::unique_ptr<RunningCapture>> FakeScreenCaptureTool::launch(QObject* context,
                                                                      std::vector<std::string> arguments, Then then) {
  launched.push_back(std::move(arguments));
  if (refusal) return *refusal;
  context_ = context;
  then_ = std::move(then);
  return std::unique_ptr<RunningCapture>(std::make_unique<FakeRun>(interrupts_, held_));
}

void FakeScreenCaptureTool::end(int exitStatus) {
  ASSERT_TRUE(then_) << "nothing runs";
  const auto then = std::exchange(then_, nullptr);
  if (context_) then(exitStatus);
}

}  // namespace Nimbrel::Testing
