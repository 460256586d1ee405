#include "Screencapture/UnexpectedExit.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

std::function<int()>& finishing() {
  static std::function<int()> finish;
  return finish;
}

void finishAtExit() {
  if (!finishing()) return;
  const int status = std::exchange(finishing(), nullptr)();
  std::fflush(nullptr);
  ::_exit(status);
}

}  // namespace

UnexpectedExit::UnexpectedExit(std::function<int()> finish) {
  finishing() = std::move(finish);
  // After the function itself, which is destroyed later for that.
  static const int registered = std::atexit(&finishAtExit);
  static_cast<void>(registered);
}

UnexpectedExit::~UnexpectedExit() { finishing() = nullptr; }

}  // namespace Nimbrel::Screencapture
