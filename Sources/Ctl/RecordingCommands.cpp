#include "CommandTable.h"
#include "EventWait.h"
#include "ReadableFile.h"

#include "Recording/RecordingProcessor.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>

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
  const auto composition =
      RecordingProcessor::composition(file, window.range.start, window.range.end, window.removeSilence, stop);
  if (!composition) return Outcome::failed(composition.error().message);
  const auto target = RecordingProcessor::trimmedURL(file);
  const auto failure = RecordingProcessor::exportMovie(composition.value(), target, {.stop = stop});
  return failure ? Outcome::failed(failure->message) : writtenTo(target);
}

/// The commands that only look at a recording.
struct Look {
  std::string_view name;
  Outcome (*run)(const std::string& file, const std::stop_token& stop);
};
constexpr std::array looks{Look{"duration", tellDuration}, Look{"audible", tellAudible}};

/// Those that write a part of it.
struct Copy {
  std::string_view name;
  Outcome (*run)(const std::string& file, const Window& window, const std::stop_token& stop);
};
constexpr std::array copies{Copy{"trim", trim}};

Outcome runLook(const Look& look, const CommandLine& line) {
  if (line.has("--start") || line.has("--end") || line.has("--remove-silence")) {
    return Outcome::misused("all of the recording is looked at");
  }
  const auto file = readableFile(line.arguments[1]);
  if (!file) return Outcome::failed(file.error().message);
  return inStoppableThread([&](const std::stop_token& stop) { return look.run(file.value(), stop); });
}

Outcome runCopy(const Copy& copy, const CommandLine& line) {
  const auto window = windowOf(line);
  if (!window) return Outcome::misused(window.error().message);
  const auto file = readableFile(line.arguments[1]);
  if (!file) return Outcome::failed(file.error().message);
  return inStoppableThread([&](const std::stop_token& stop) { return copy.run(file.value(), window.value(), stop); });
}

}  // namespace

Outcome runRecording(const CommandLine& line, Session&) {
  const auto& verb = line.arguments.front();
  const auto look = std::ranges::find(looks, verb, &Look::name);
  if (look != looks.end()) return runLook(*look, line);
  const auto copy = std::ranges::find(copies, verb, &Copy::name);
  if (copy != copies.end()) return runCopy(*copy, line);
  return Outcome::misused("no such work on a recording: " + verb);
}

}  // namespace Nimbrel::Ctl
