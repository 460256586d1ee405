#include "Model/AppIdentity.h"

#include "Foundation/FilePath.h"

namespace Nimbrel {

namespace {

constexpr std::string_view companionProgram = "nimbrel-menubar";
constexpr const char* formerIdentifier = "local.nimbrel";
const auto migrationKey = QStringLiteral("didMigrateLocalNimbrelDefaults");

std::string companionIdentifier() { return AppIdentity::bundleIdentifier() + ".menubar"; }

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
  const bool isCompanion = FilePath::lastComponent(programName) == companionProgram;
  return AppIdentity(isCompanion ? companionIdentifier() : bundleIdentifier());
}

const std::string& AppIdentity::bundleIdentifier() {
  static const std::string identifier = "com.halderquist.nimbrel";
  return identifier;
}

bool AppIdentity::isOurs(std::string_view identifier) {
  return identifier == bundleIdentifier() || identifier == companionIdentifier();
}

bool AppIdentity::isMenuBarHelper() const { return processIdentifier_ == companionIdentifier(); }

std::unique_ptr<Defaults> AppIdentity::openDefaults(const std::string& preferencesFolder) {
  auto defaults = std::make_unique<Defaults>(preferencesFolder, bundleIdentifier());
  migrateFormerDefaults(*defaults, preferencesFolder);
  return defaults;
}

}  // namespace Nimbrel
