#pragma once

#include <functional>
#include <string>
#include <string_view>

/// Lines for whoever looks after the machine: only what the user needs not see. Any thread.
namespace Nimbrel::Log {

using Sink = std::function<void(std::string_view line)>;

/// Writes one line through the sink, standard error until another is set.
void write(std::string_view line);

/// Sends all further lines to `sink`, which must bear calls from any thread; an empty one restores standard error.
/// Returns the former sink, so that a test can put it back.
Sink setSink(Sink sink);

}  // namespace Nimbrel::Log
