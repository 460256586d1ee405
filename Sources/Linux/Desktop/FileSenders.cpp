#include "Linux/Desktop/FileSenders.h"

#include "Linux/Desktop/DetachedProgram.h"
#include "Linux/Desktop/GLibHandles.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Nimbrel::FileSenders {

namespace {

struct Program {
  const char* file;
  const char* name;
  const char* icon;
  const char* option = nullptr;  ///< before the path
};

constexpr std::array programs = {
    Program{.file = "bluetooth-sendto", .name = "Bluetooth", .icon = "bluetooth"},
    Program{.file = "blueman-sendto", .name = "Bluetooth", .icon = "bluetooth", .option = "--"},
    Program{.file = "bluedevil-sendfile", .name = "Bluetooth", .icon = "bluetooth", .option = "-f"},
    Program{.file = "kdeconnect-handler", .name = "KDE Connect", .icon = "kdeconnect"},
    Program{.file = "nautilus-sendto", .name = "Send To", .icon = "document-send"},
};

bool isInstalled(const Program& program) { return GLibText(g_find_program_in_path(program.file)) != nullptr; }

}  // namespace

std::vector<Workspace::Taker> installed() {
  std::vector<Workspace::Taker> senders;
  for (const auto& program : programs) {
    // Two for the same purpose would be told apart by nobody.
    const bool isNamed = std::ranges::find(senders, program.name, &Workspace::Taker::name) != senders.end();
    if (!isNamed && isInstalled(program)) {
      senders.push_back({.id = program.file, .name = program.name, .icon = program.icon});
    }
  }
  return senders;
}

void send(const std::string& path, const std::string& sender) {
  const auto program = std::ranges::find(programs, sender, [](const Program& one) { return std::string(one.file); });
  if (program == programs.end()) return;
  std::vector<std::string> arguments;
  if (program->option != nullptr) arguments.emplace_back(program->option);
  arguments.push_back(path);
  (void)startDetached(program->file, std::move(arguments));
}

}  // namespace Nimbrel::FileSenders
