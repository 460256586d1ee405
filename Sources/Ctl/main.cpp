#include "CommandTable.h"

#include "Platform/Process.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>

namespace Nimbrel::Ctl {

namespace {

constexpr std::string_view helpOption = "--help";
constexpr std::string_view versionOption = "--version";
constexpr std::string_view jsonOption = "--json";

int print(const Outcome& outcome, bool asJson, const std::string& usageText) {
  if (outcome.status == Outcome::Done) {
    std::cout << (asJson ? jsonText(outcome.json) + "\n" : outcome.text) << std::flush;
    if (std::cout) return Outcome::Done;
    std::cerr << "nimbrelctl: the output cannot be written\n";
    return Outcome::Failed;
  }
  std::cerr << "nimbrelctl: " << printable(outcome.error) << '\n';
  if (outcome.status == Outcome::Misused) std::cerr << usageText;
  return outcome.status;
}

/// What Qt wants to be there while a command runs. It never needs a display, and never sees the words, among which it
/// would look for some of its own.
std::unique_ptr<QCoreApplication> applicationFor(const Command& command) {
  static int count = 1;
  static std::string name = "nimbrelctl";
  static std::array words{name.data(), static_cast<char*>(nullptr)};
  if (command.needs == Command::Needs::EventLoop) return std::make_unique<QCoreApplication>(count, words.data());
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return std::make_unique<QGuiApplication>(count, words.data());
}

Outcome checkedRun(const Command& command, const CommandLine& line) {
  if (line.arguments.size() < command.fewestArguments) return Outcome::misused("too few arguments");
  if (line.arguments.size() > command.mostArguments) return Outcome::misused("too many arguments");
  const auto application = applicationFor(command);
  Session session;
  return command.run(line, session);
}

int printVersion() { return print(Outcome::done({}, "nimbrelctl " NIMBREL_VERSION "\n"), false, {}); }

int run(const Command& command, std::span<const std::string_view> words) {
  auto options = command.options;
  options.insert(options.end(), {{helpOption, ""}, {versionOption, ""}, {jsonOption, ""}});
  const auto line = parseCommandLine(words, options);
  if (!line) return print(Outcome::misused(line.error().message), false, usage(command));
  if (line.value().has(helpOption)) return print(Outcome::done({}, usage(command)), false, {});
  if (line.value().has(versionOption)) return printVersion();
  return print(checkedRun(command, line.value()), line.value().has(jsonOption), usage(command));
}

/// "nimbrelctl --json list" is as good as "nimbrelctl list --json".
void moveJsonBehindCommand(std::vector<std::string_view>& words) {
  const auto name = std::ranges::find_if(words, [](std::string_view word) { return word != jsonOption; });
  if (name != words.begin() && name != words.end()) {
    words.erase(words.begin(), name);
    words.insert(words.begin() + 1, jsonOption);
  }
}

int run(std::vector<std::string_view> words) {
  if (!words.empty() && words.front() == "--") words.erase(words.begin());
  moveJsonBehindCommand(words);
  if (words.empty() || words.front() == jsonOption) return print(Outcome::misused("which command?"), false, usage());
  if (words.front() == helpOption) return print(Outcome::done({}, usage()), false, {});
  if (words.front() == versionOption) return printVersion();
  const auto command = std::ranges::find(commands(), words.front(), &Command::name);
  if (command == commands().end()) {
    return print(Outcome::misused("unknown command " + std::string(words.front())), false, usage());
  }
  return run(*command, std::span(words).subspan(1));
}

}  // namespace

}  // namespace Nimbrel::Ctl

int main(int argc, char** argv) {
  Nimbrel::Process::logToSystem("nimbrelctl");
  return Nimbrel::Ctl::run({argv + std::min(argc, 1), argv + argc});
}
