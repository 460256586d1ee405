#include "Model/AppIdentity.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

using Testing::TemporaryFolder;

TEST(AppIdentity, TheCompanionIsToldByTheNameItWasStartedUnder) {
  const auto companion = AppIdentity::fromProgramName("/usr/bin/nimbrel-menubar");
  EXPECT_TRUE(companion.isMenuBarHelper());
  EXPECT_EQ(companion.processIdentifier(), "com.halderquist.nimbrel.menubar");
  const auto application = AppIdentity::fromProgramName("./nimbrel");
  EXPECT_FALSE(application.isMenuBarHelper());
  EXPECT_EQ(application.processIdentifier(), "com.halderquist.nimbrel");
}

TEST(OpenDefaults, FormerSettingsAreTakenOverOnceWithoutOverwriting) {
  const TemporaryFolder folder;
  Defaults former(folder.path(), "local.nimbrel");
  former.set(QStringLiteral("autoFile"), true);
  former.set(QStringLiteral("thumbSize"), 120);
  Defaults(folder.path(), "com.halderquist.nimbrel").set(QStringLiteral("thumbSize"), 200);

  auto defaults = AppIdentity::openDefaults(folder.path());
  EXPECT_EQ(defaults->value(QStringLiteral("autoFile")), QJsonValue(true));
  EXPECT_EQ(defaults->value(QStringLiteral("thumbSize")).toInt(), 200);
  EXPECT_TRUE(defaults->value(QStringLiteral("didMigrateLocalNimbrelDefaults")).toBool());

  defaults->remove(QStringLiteral("autoFile"));
  defaults = AppIdentity::openDefaults(folder.path());
  EXPECT_TRUE(defaults->value(QStringLiteral("autoFile")).isUndefined());
}

TEST(OpenDefaults, WithoutFormerSettingsTheFlagIsSetAllTheSame) {
  const TemporaryFolder folder;
  const auto defaults = AppIdentity::openDefaults(folder.path());
  EXPECT_EQ(defaults->keys(), QStringList{QStringLiteral("didMigrateLocalNimbrelDefaults")});
}

}  // namespace
}  // namespace Nimbrel
