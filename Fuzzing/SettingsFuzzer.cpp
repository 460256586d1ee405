// A settings file as whoever edits it leaves it.

#include "Catalogue/Settings.h"
#include "Foundation/Log.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace Nimbrel {

namespace {

/// Fast, and gone with the machine.
QString folder() {
  static const QTemporaryDir temporary(QStringLiteral("/dev/shm/nimbrel-fuzzing-XXXXXX"));
  if (!temporary.isValid()) std::abort();
  return temporary.path();
}

void write(const QString& path, const QByteArray& content) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) std::abort();
}

/// Damaged files were copied aside, and the next is to find an empty folder.
void clear(const QDir& suites) {
  for (const auto& name : suites.entryList(QDir::Files)) QFile::remove(suites.filePath(name));
}

}  // namespace

}  // namespace Nimbrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Nimbrel;
  Log::setSink([](std::string_view) {});
  const QDir suites(folder());
  // The library keeps one state for each name.
  static int number = 0;
  const auto name = "suite" + std::to_string(number++);
  write(suites.filePath(QString::fromStdString(name + ".json")),
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  {
    Defaults defaults(suites.path().toStdString(), name);
    const NullScreenshotTool tool;
    const UserFolders folders{.home = "/home", .applicationSupport = "/home/a", .preferences = "/home/p"};
    Settings settings(defaults, folders, tool);
    settings.refreshFromDisk();
    if (settings.inspectorWidth() < 240 || settings.inspectorWidth() > 460) std::abort();
    if (!settings.libraryFolder().starts_with('/')) std::abort();
  }
  clear(suites);
  return 0;
}
