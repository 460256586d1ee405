#pragma once

#include "CommandLine.h"
#include "Outcome.h"
#include "Session.h"

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Ctl {

inline constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

/// One command of the program. Every command also takes --json and --help.
struct Command {
  /// What of Qt it works with. Fonts take a while to start.
  enum class Needs { EventLoop, Fonts };

  std::string_view name;
  std::string_view argumentNames;  ///< as the usage shows them
  std::string_view summary;
  std::size_t fewestArguments = 0;
  std::size_t mostArguments = 0;
  std::vector<OptionSpec> options;
  Outcome (*run)(const CommandLine& line, Session& session) = nullptr;
  Needs needs = Needs::EventLoop;
};

/// All commands, in the order of the usage.
[[nodiscard]] std::span<const Command> commands();

/// The usage of the whole program, and of one command.
[[nodiscard]] std::string usage();
[[nodiscard]] std::string usage(const Command& command);

// The commands themselves, by subject.
[[nodiscard]] Outcome runList(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runShow(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runOverview(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runDuplicates(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runCleanup(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runPurge(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runDetect(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runImport(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runScan(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runRead(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runRecording(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runFile(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runTrash(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runForget(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runRename(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runNote(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runSource(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runFavorite(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runTag(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runUntag(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runProject(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runShrink(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runRules(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runSearch(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runSettings(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runSync(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runCapture(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runFlatten(const CommandLine& line, Session& session);
[[nodiscard]] Outcome runDoctor(const CommandLine& line, Session& session);

}  // namespace Nimbrel::Ctl
