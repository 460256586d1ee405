#include "Samples/SampleWriter.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QString>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view usage =
    "Usage: nimbrel-sample [--now SECONDS] FOLDER\n"
    "Makes a home with a library of drawn screenshots in FOLDER, to start Nimbrel with.\n"
    "\n"
    "  --now SECONDS  the present moment in seconds since 1970, in place of the clock's\n"
    "  --help         shows this text\n";

/// The end of the year 9999, beyond which dates have no four-digit year.
constexpr qint64 latestMoment = 253402214400;

enum ExitStatus { done = 0, failed = 1, wrongUsage = 2 };

struct Arguments {
  std::string folder;
  std::optional<qint64> now;
  bool help = false;
};

std::optional<qint64> secondsIn(std::string_view text) {
  qint64 seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  // The oldest picture lies weeks before the present moment.
  constexpr qint64 earliestMoment = 60LL * 24 * 3600;
  if (seconds < earliestMoment || seconds > latestMoment) return std::nullopt;
  return seconds;
}

/// Absent when they are not as the usage says.
std::optional<Arguments> parsed(std::span<char* const> words) {
  Arguments arguments;
  for (std::size_t index = 0; index < words.size(); ++index) {
    const std::string_view word = words[index];
    if (word == "--help") {
      arguments.help = true;
    } else if (word == "--now" && index + 1 < words.size()) {
      arguments.now = secondsIn(words[++index]);
      if (!arguments.now) return std::nullopt;
    } else if (word.empty() || word.starts_with('-') || !arguments.folder.empty()) {
      return std::nullopt;
    } else {
      arguments.folder = word;
    }
  }
  if (arguments.folder.empty() && !arguments.help) return std::nullopt;
  return arguments;
}

int complain(ExitStatus status, const std::string& message) {
  std::fprintf(stderr, "nimbrel-sample: %s\n", message.c_str());
  return status;
}

int makeHome(const Arguments& arguments) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(arguments.folder, error).lexically_normal();
  if (error) return complain(failed, error.message());
  auto folder = absolute.string();
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  // The settings are JSON, which can hold no other text.
  if (QString::fromStdString(folder).toStdString() != folder) {
    return complain(failed, "the path of the folder is not valid UTF-8");
  }
  const auto now = arguments.now ? QDateTime::fromSecsSinceEpoch(*arguments.now) : QDateTime::currentDateTime();
  const auto count = Nimbrel::Samples::writeSampleHome(folder, now);
  if (!count) return complain(failed, count.error().message);
  std::printf("%d pictures in %s\n", count.value(), folder.c_str());
  return done;
}

}  // namespace

int main(int argc, char** argv) {
  const auto arguments = parsed({argv + 1, argv + argc});
  if (!arguments) return complain(wrongUsage, "wrong arguments, see nimbrel-sample --help");
  if (arguments->help) {
    std::fwrite(usage.data(), 1, usage.size(), stdout);
    return done;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // Remarks of the toolkit, on the session or on a damaged picture, would stand beside our one line.
  QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
  // Our arguments are not the toolkit's.
  std::array<char*, 2> own{argv[0], nullptr};
  int count = 1;
  const QGuiApplication application(count, own.data());
  return makeHome(*arguments);
}
