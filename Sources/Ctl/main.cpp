#include "CommandTable.h"

#include "Platform/Process.h"

#include <QCoreApplication>

#include <algorithm>
#include <iostream>

namespace Nimbrel::Ctl {

namespace {

constexpr std::string_view helpOption = "--help";
constexpr std::string_view versionOption = "--version";
constexpr std::string_view jsonOption = "--json";

int print(const Outcome& outcome, bool asJson, const std::string& usageText) {
  if (outcome.status == Outcome::Done) {
    std::cout << (asJson ? jsonText(outcome.json) + "\n" : outcome.text) << std::flush;
    return std::cout ? Outcome::Done : Outcome::Failed;
  }
  std::cerr << "nimbrelctl: " << outcome.error << '\n';
  if (outcome.status == Outcome::Misused) std::cerr << usageText;
  return outcome.status;
}

Outcome checkedRun(const Command& command, const CommandLine& line) {
  if (line.arguments.size() < command.fewestArguments) return Outcome::misused("too few arguments");
  if (line.arguments.size() > command.mostArguments) return Outcome::misused("too many arguments");
  Session session;
  return command.run(line, session);
}

int run(const Command& command, std::span<const std::string_view> words) {
  auto options = command.options;
  options.insert(options.end(), {{helpOption, ""}, {versionOption, ""}, {jsonOption, ""}});
  const auto line = parseCommandLine(words, options);
  if (!line) return print(Outcome::misused(line.error().message), false, usage(command));
  if (line.value().has(helpOption)) return print(Outcome::done({}, usage(command)), false, {});
  if (line.value().has(versionOption)) return print(Outcome::done({}, "nimbrelctl " NIMBREL_VERSION "\n"), false, {});
  return print(checkedRun(command, line.value()), line.value().has(jsonOption), usage(command));
}

int run(std::span<const std::string_view> words) {
  if (words.empty()) return print(Outcome::misused("which command?"), false, usage());
  if (words.front() == helpOption) return print(Outcome::done({}, usage()), false, {});
  if (words.front() == versionOption) return print(Outcome::done({}, "nimbrelctl " NIMBREL_VERSION "\n"), false, {});
  // "nimbrelctl --json list" is as good as "nimbrelctl list --json".
  const auto name = std::ranges::find_if(words, [](std::string_view word) { return word != jsonOption; });
  const auto command = name == words.end() ? commands().end() : std::ranges::find(commands(), *name, &Command::name);
  if (command == commands().end()) {
    const std::string given(name == words.end() ? words.front() : *name);
    return print(Outcome::misused("unknown command " + given), false, usage());
  }
  std::vector<std::string_view> rest(words.begin(), name);
  rest.insert(rest.end(), name + 1, words.end());
  return run(*command, rest);
}

}  // namespace

}  // namespace Nimbrel::Ctl

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  Nimbrel::Process::logToSystem("nimbrelctl");
  const std::vector<std::string_view> words(argv + std::min(argc, 1), argv + argc);
  return Nimbrel::Ctl::run(words);
}
