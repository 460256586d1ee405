#include "CommandTable.h"
#include "EventWait.h"
#include "ReadableFile.h"

#include "Recording/RecordingProcessor.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <limits>

namespace Nimbrel::Ctl {

namespace {

using RecordingProcessor::TimeRange;

/// Which part of a recording is wanted.
struct Window {
  TimeRange range;  ///< in seconds, as it was given
  bool removeSilence = false;
};

Result<double> secondsOf(const CommandLine& line, std::string_view option) {
  const auto text = line.value(option);
  if (!text) return Error{"from when to when? " + std::string(option) + " is missing"};
  const auto seconds = decimalFraction(*text);
  if (!seconds) return Error{std::string(option) + " is no number of seconds: " + std::string(*text)};
  return *seconds;
}

Result<Window> windowOf(const CommandLine& line) {
  const auto start = secondsOf(line, "--start");
  if (!start) return start.error();
  const auto end = secondsOf(line, "--end");
  if (!end) return end.error();
  return Window{.range = {.start = start.value(), .end = end.value()}, .removeSilence = line.has("--remove-silence")};
}

Result<int> framesPerSecondOf(const CommandLine& line) {
  const auto text = line.value("--fps");
  if (!text) return Error{"how many frames a second? --fps is missing"};
  const auto number = decimal(*text);
  if (!number || *number < 1) return Error{"--fps is no number of frames a second: " + std::string(*text)};
  return static_cast<int>(std::min<std::int64_t>(*number, std::numeric_limits<int>::max()));
}

std::string secondsText(double seconds) { return QString::number(seconds, 'f', 3).toStdString(); }

Outcome writtenTo(const std::string& path) {
  return Outcome::done(QJsonObject{{QStringLiteral("path"), jsonString(path)}}, printable(path) + "\n");
}

Outcome tellDuration(const std::string& file, const std::stop_token&) {
  const auto duration = RecordingProcessor::duration(file);
  if (!duration) return Outcome::failed(duration.error().message);
  return Outcome::done(QJsonObject{{QStringLiteral("duration"), duration.value()}},
                       secondsText(duration.value()) + "\n");
}

Outcome tellAudible(const std::string& file, const std::stop_token& stop) {
  const auto ranges = RecordingProcessor::audibleRanges(file, stop);
  if (!ranges) return Outcome::failed(ranges.error().message);
  QJsonArray list;
  std::string text;
  for (const auto& [start, end] : ranges.value()) {
    list.append(QJsonArray{start, end});
    text += secondsText(start) + "  " + secondsText(end) + "\n";
  }
  return Outcome::done(list, text);
}

Outcome trim(const std::string& file, const Window& window, const std::stop_token& stop) {
  const auto path =
      RecordingProcessor::trimmedCopy(file, window.range.start, window.range.end, window.removeSilence, {.stop = stop});
  return path ? writtenTo(path.value()) : Outcome::failed(path.error().message);
}

Outcome makeGif(const std::string& file, const Window& window, int framesPerSecond, const std::stop_token& stop) {
  const auto path = RecordingProcessor::gif(file, window.range.start, window.range.end, framesPerSecond,
                                            window.removeSilence, {.stop = stop});
  return path ? writtenTo(path.value()) : Outcome::failed(path.error().message);
}

/// The commands that only look at a recording.
struct Look {
  std::string_view name;
  Outcome (*run)(const std::string& file, const std::stop_token& stop);
};
constexpr std::array looks{Look{"duration", tellDuration}, Look{"audible", tellAudible}};

Outcome runLook(const Look& look, const CommandLine& line) {
  if (line.has("--start") || line.has("--end") || line.has("--remove-silence") || line.has("--fps")) {
    return Outcome::misused("all of the recording is looked at");
  }
  const auto file = readableFile(line.arguments[1]);
  if (!file) return Outcome::failed(file.error().message);
  return inStoppableThread([&](const std::stop_token& stop) { return look.run(file.value(), stop); });
}

/// Writes a part of a recording.
using Copy = std::function<Outcome(const std::string& file, const Window& window, const std::stop_token& stop)>;

Outcome runCopy(const CommandLine& line, const Copy& copy) {
  const auto window = windowOf(line);
  if (!window) return Outcome::misused(window.error().message);
  const auto file = readableFile(line.arguments[1]);
  if (!file) return Outcome::failed(file.error().message);
  return inStoppableThread([&](const std::stop_token& stop) { return copy(file.value(), window.value(), stop); });
}

Outcome runTrim(const CommandLine& line) {
  if (line.has("--fps")) return Outcome::misused("a trimmed copy keeps its frames");
  return runCopy(line, trim);
}

Outcome runGif(const CommandLine& line) {
  const auto framesPerSecond = framesPerSecondOf(line);
  if (!framesPerSecond) return Outcome::misused(framesPerSecond.error().message);
  return runCopy(line, [&](const std::string& file, const Window& window, const std::stop_token& stop) {
    return makeGif(file, window, framesPerSecond.value(), stop);
  });
}

}  // namespace

Outcome runRecording(const CommandLine& line, Session&) {
  const auto& verb = line.arguments.front();
  const auto look = std::ranges::find(looks, verb, &Look::name);
  if (look != looks.end()) return runLook(*look, line);
  if (verb == "trim") return runTrim(line);
  if (verb == "gif") return runGif(line);
  return Outcome::misused("no such work on a recording: " + verb);
}

}  // namespace Nimbrel::Ctl
