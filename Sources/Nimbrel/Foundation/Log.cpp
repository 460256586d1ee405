#include "Foundation/Log.h"

#include <cstdio>
#include <mutex>
#include <utility>

namespace Nimbrel::Log {

namespace {

struct State {
  std::mutex mutex;
  Sink sink;
};

State& state() {
  static State shared;
  return shared;
}

void writeToStandardError(std::string_view line) {
  std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

}  // namespace

void write(std::string_view line) {
  Sink sink;
  {
    const std::scoped_lock lock(state().mutex);
    sink = state().sink;
  }
  if (sink) {
    sink(line);
  } else {
    writeToStandardError(line);
  }
}

Sink setSink(Sink sink) {
  const std::scoped_lock lock(state().mutex);
  return std::exchange(state().sink, std::move(sink));
}

}  // namespace Nimbrel::Log
