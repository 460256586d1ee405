#pragma once

#include "Foundation/Result.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nimbrel {

/// A screenshot or recording under way. It does not end with this object.
class RunningCapture {
 public:
  virtual ~RunningCapture() = default;

  /// Asks for the end: a recording is finished and its file is written, anything else is given up. Returns at once; may
  /// be called again, and after the end, when it does nothing.
  virtual void interrupt() = 0;
};

/// The program that takes screenshots and recordings. It is given a list of arguments that ends with the file to write,
/// and its exit status is 0 when that file was written or the user cancelled, else another. Main thread.
class ScreenCaptureTool {
 public:
  /// The exit status; of a program that did not end by itself 128 and more.
  using Then = std::function<void(int exitStatus)>;

  virtual ~ScreenCaptureTool() = default;

  /// Starts the program and calls `then` once it has ended, in a later turn of the event loop; never once `context` is
  /// gone. The error says why it could not be started, and then `then` is not called.
  [[nodiscard]] virtual Result<std::unique_ptr<RunningCapture>> launch(QObject* context,
                                                                       std::vector<std::string> arguments,
                                                                       Then then) = 0;
};

/// Where nothing can take screenshots.
class NullScreenCaptureTool final : public ScreenCaptureTool {
 public:
  [[nodiscard]] Result<std::unique_ptr<RunningCapture>> launch(QObject*, std::vector<std::string>, Then) override {
    return Error{"Screenshots cannot be taken here"};
  }
};

}  // namespace Nimbrel
