#include "App/MenuBarCompanion.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Platform/FileSystem.h"

#include <QFile>
#include <QProcess>

#include <stop_token>

namespace Nimbrel {

namespace {

constexpr const char* companionProgram = "nimbrel-menubar";

/// A look that waits for nobody.
std::optional<FolderLock> holdAtOnce(const UserFolders& folders) {
  std::stop_source impatience;
  impatience.request_stop();
  return FolderLock::take(folders.applicationSupport, impatience.get_token());
}

}  // namespace

std::string MenuBarCompanion::bundleIdentifier() { return AppIdentity::bundleIdentifier() + ".menubar"; }

std::optional<FolderLock> MenuBarCompanion::announce(const UserFolders& folders) { return holdAtOnce(folders); }

bool MenuBarCompanion::isRunning(const UserFolders& folders) { return !holdAtOnce(folders).has_value(); }

void MenuBarCompanion::launchIfNeeded(const AppIdentity& identity, const UserFolders& folders,
                                      const std::string& programs) {
  if (identity.isMenuBarHelper() || isRunning(folders)) return;
  const auto program = FilePath::join(programs, companionProgram);
  if (!FileSystem::exists(program)) return;
  QProcess companion;
  companion.setProgram(QFile::decodeName(program.c_str()));
  companion.setStandardInputFile(QProcess::nullDevice());
  if (!companion.startDetached()) {
    Log::write("Nimbrel menu bar launch failed: " + companion.errorString().toStdString());
  }
}

}  // namespace Nimbrel
