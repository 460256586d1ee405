#include "Model/AppIdentity.h"

#include "Foundation/FilePath.h"

namespace Nimbrel {

namespace {

constexpr std::string_view companionProgram = "nimbrel-menubar";
constexpr const char* formerIdentifier = "local.nimbrel";
const auto migrationKey = QStringLiteral("didMigrateLocalNimbrelDefaults");

void migrateFormerDefaults(Defaults& defaults, const std::string& preferencesFolder) {
  if (defaults.value(migrationKey).toBool()) return;
  const Defaults former(preferencesFolder, formerIdentifier);
  for (const auto& key : former.keys()) {
    if (defaults.value(key).isUndefined()) defaults.set(key, former.value(key));
  }
  defaults.set(migrationKey, true);
}

}  // namespace

AppIdentity AppIdentity::fromProgramName(std::string_view programName) {
  return AppIdentity(FilePath::lastComponent(programName) == companionProgram);
}

const std::string& AppIdentity::bundleIdentifier() {
  static const std::string identifier = "com.halderquist.nimbrel";
  return identifier;
}

std::string AppIdentity::processIdentifier() const {
  return isMenuBarHelper_ ? bundleIdentifier() + ".menubar" : bundleIdentifier();
}

std::unique_ptr<Defaults> AppIdentity::openDefaults(const std::string& preferencesFolder) {
  auto defaults = std::make_unique<Defaults>(preferencesFolder, bundleIdentifier());
  migrateFormerDefaults(*defaults, preferencesFolder);
  return defaults;
}

}  // namespace Nimbrel
