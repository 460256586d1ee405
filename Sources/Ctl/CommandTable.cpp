#include "CommandTable.h"

#include <iomanip>
#include <sstream>

namespace Nimbrel::Ctl {

std::span<const Command> commands() {
  static const std::vector<Command> table{
      {"list", "", "list the shots, newest first", 0, 0, {}, runList},
      {"show", "ID…", "show the whole record of each shot", 1, anyNumber, {{"--reveal", ""}}, runShow},
      {"overview", "", "show counts, tags, projects and saved searches", 0, 0, {}, runOverview},
      {"duplicates", "", "group near-duplicate shots", 0, 0, {{"--tolerance", "N"}}, runDuplicates},
      {"detect", "", "find links, numbers, dates and secrets in the text on standard input", 0, 0, {}, runDetect},
      {"import", "FILE…", "add images where they lie", 1, anyNumber, {}, runImport},
      {"scan", "", "compare the watched folders and the library with the catalogue", 0, 0, {}, runScan},
      {"settings", "[KEY [VALUE]]", "show all settings or one, or set one", 0, 2, {}, runSettings},
  };
  return table;
}

std::string usage() {
  std::ostringstream text;
  text << "usage: nimbrelctl COMMAND [--json] [--] …\n\n";
  for (const auto& command : commands()) {
    text << "  " << std::left << std::setw(12) << command.name << command.summary << '\n';
  }
  text << "\n\"nimbrelctl COMMAND --help\" tells more; --version prints the version.\n";
  return text.str();
}

std::string usage(const Command& command) {
  std::string text = "usage: nimbrelctl " + std::string(command.name) + " [--json]";
  for (const auto& option : command.options) {
    text += " [" + std::string(option.name);
    if (!option.valueName.empty()) text += " " + std::string(option.valueName);
    text += "]";
  }
  if (!command.argumentNames.empty()) text += " " + std::string(command.argumentNames);
  return text + "\n" + std::string(command.summary) + "\n";
}

}  // namespace Nimbrel::Ctl
