#include "CommandTable.h"

#include <iomanip>
#include <sstream>

namespace Nimbrel::Ctl {

namespace {

OptionSpec required(std::string_view name, std::string_view valueName) {
  return {.name = name, .valueName = valueName, .isRequired = true};
}

std::string usage(const OptionSpec& option) {
  std::string words(option.name);
  if (!option.valueName.empty()) words += " " + std::string(option.valueName);
  return option.isRequired ? words : "[" + words + "]";
}

}  // namespace

std::span<const Command> commands() {
  static const std::vector<OptionSpec> filterOptions{
      {"--filter", "F"}, {"--query", "TEXT"}, {"--sort", "newest|oldest|name"}, {"--sections", ""}, {"--reveal", ""}};
  static const std::vector<Command> table{
      {"list", "", "list the shots that the window would show", 0, 0, filterOptions, runList},
      {"show", "ID…", "show the whole record of each shot", 1, anyNumber, {{"--reveal", ""}}, runShow},
      {"overview", "", "show what the sidebar shows", 0, 0, {}, runOverview},
      {"duplicates",
       "",
       "group near-duplicate shots, or move all but one of each group to the Trash",
       0,
       anyNumber,
       {{"--tolerance", "N"}, {"--trash", ""}, {"--keep", "ID…"}},
       runDuplicates},
      {"cleanup",
       "",
       "suggest shots to get rid of, or move them all to the Trash",
       0,
       0,
       {{"--trash", ""}},
       runCleanup},
      {"purge",
       "",
       "list the shots that are older than so many days, or move them all to the Trash",
       0,
       0,
       {required("--days", "N"), {"--inbox-only", ""}, {"--trash", ""}},
       runPurge},
      {"detect", "", "find links, dates, secrets and the like in the text on standard input", 0, 0, {}, runDetect},
      {"read", "FILE", "recognise text and codes of an image", 1, 1, {}, runRead},
      {"recording",
       "duration|audible|trim|gif FILE",
       "measure a recording, find where it is audible, or copy a part of it, as a movie or an animated GIF",
       2,
       2,
       {{"--start", "S"}, {"--end", "S"}, {"--fps", "N"}, {"--remove-silence", ""}},
       runRecording},
      {"import", "FILE…", "add images where they lie", 1, anyNumber, {{"--wait", ""}}, runImport},
      {"scan", "", "compare the watched folders and the library with the catalogue", 0, 0, {{"--wait", ""}}, runScan},
      {"file", "ID…", "move shots into the library", 1, anyNumber, {}, runFile},
      {"trash", "ID…", "move shots to the Trash", 1, anyNumber, {}, runTrash},
      {"forget", "ID…", "take shots out of the catalogue and leave their files alone", 1, anyNumber, {}, runForget},
      {"rename", "ID NAME", "rename the file of a shot", 2, 2, {}, runRename},
      {"note", "ID TEXT", "set the note of a shot", 2, 2, {}, runNote},
      {"source", "ID NAME", "say which application a shot shows", 2, 2, {}, runSource},
      {"favorite", "ID…", "star shots, or take their stars away", 1, anyNumber, {{"--off", ""}}, runFavorite},
      {"tag", "ID…", "add a tag to shots", 1, anyNumber, {required("--tag", "T")}, runTag},
      {"untag", "ID…", "take a tag off shots", 1, anyNumber, {required("--tag", "T")}, runUntag},
      {"project", "ID…", "put shots into a project", 1, anyNumber, {required("--name", "P")}, runProject},
      {"shrink", "ID…", "encode the files of shots anew as HEIC", 1, anyNumber, {}, runShrink},
      {"rules", "apply", "run the automation rules over all shots", 1, 1, {}, runRules},
      {"search", "save|remove TEXT", "keep a search in the sidebar, or take it away", 2, 2, {}, runSearch},
      {"settings", "[KEY [VALUE]]", "show all settings or one, or set one", 0, 2, {}, runSettings},
      {"sync",
       "",
       "exchange the library with the vault; the passphrase comes on standard input or is asked for",
       0,
       0,
       {},
       runSync},
      {"capture",
       "area|window|screen|recordArea|recordScreen",
       "take a screenshot or a recording, or only say where it would go",
       1,
       1,
       {{"--dry-run", ""}},
       runCapture},
      {"flatten",
       "IN OUT",
       "burn a JSON list of marks into a copy of an image, a PNG",
       2,
       2,
       {required("--marks", "FILE")},
       runFlatten,
       Command::Needs::Fonts},
      {"doctor", "", "tell what this desktop offers, and what to do where it does not", 0, 0, {}, runDoctor},
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
  for (const auto& option : command.options) text += " " + usage(option);
  if (!command.argumentNames.empty()) text += " " + std::string(command.argumentNames);
  return text + "\n" + std::string(command.summary) + "\n";
}

}  // namespace Nimbrel::Ctl
