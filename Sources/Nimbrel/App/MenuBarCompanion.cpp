#include "App/MenuBarCompanion.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Platform/FileSystem.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>

#include <stop_token>

namespace Nimbrel {

namespace {

constexpr const char* companionProgram = "nimbrel-menubar";
constexpr const char* mainProgram = "nimbrel";

/// Where programs look for what the desktop gave whoever started them.
QProcessEnvironment environmentWith(const std::string& token) {
  auto environment = QProcessEnvironment::systemEnvironment();
  if (token.empty()) return environment;
  for (const auto* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
    environment.insert(QLatin1String(name), QString::fromStdString(token));
  }
  return environment;
}

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
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QLatin1String(unaskedVariable), QStringLiteral("1"));
  companion.setProcessEnvironment(environment);
  companion.setStandardInputFile(QProcess::nullDevice());
  if (!companion.startDetached()) {
    Log::write("Nimbrel menu bar launch failed: " + companion.errorString().toStdString());
  }
}

void MenuBarCompanion::openMainApp(const AppIdentity& identity, const std::string& programs, const std::string& token,
                                   const std::function<void()>& raise) {
  if (!identity.isMenuBarHelper()) return raise();
  QProcess application;
  application.setProgram(QFile::decodeName(FilePath::join(programs, mainProgram).c_str()));
  application.setProcessEnvironment(environmentWith(token));
  application.setStandardInputFile(QProcess::nullDevice());
  if (!application.startDetached()) {
    Log::write("Nimbrel window launch failed: " + application.errorString().toStdString());
  }
}

}  // namespace Nimbrel
