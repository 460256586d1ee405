#pragma once

#include <string>

namespace Nimbrel::Benchmarks {

inline constexpr int recordingFramesPerSecond = 30;

/// Writes a recording of a screen of 1920 x 1080 pixels that takes so many minutes: a page of text that is typed and
/// scrolled, a window that is dragged about, and somebody who speaks and pauses. One minute of it is drawn and then
/// repeated. Ends the program with a message when that does not work.
void makeRecording(const std::string& path, int minutes);

}  // namespace Nimbrel::Benchmarks
