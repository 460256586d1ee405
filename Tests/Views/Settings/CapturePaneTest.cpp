#include "Views/Settings/SettingsViewFixture.h"

#include <utility>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using CapturePaneTest = Testing::SettingsViewFixture;

TEST_F(CapturePaneTest, TheTogglesStandInTheirOrder) {
  show();
  std::vector<std::string> names;
  for (const auto* toggle : at("capture").findChildren<QCheckBox*>()) {
    names.push_back(toggle->accessibleName().toStdString());
  }
  EXPECT_THAT(names,
              ElementsAre("Show in the menu bar", "Global capture shortcut (⌃⇧5)", "Quick find shortcut (⌃⇧Space)"));
}

TEST_F(CapturePaneTest, TheMenuBarIsTheStoresAffair) {
  show();
  EXPECT_TRUE(toggle("showMenuBar").isChecked());
  click("showMenuBar");
  EXPECT_FALSE(store_->showMenuBar());
  EXPECT_FALSE(settings().showMenuBar());
  setElsewhere(QStringLiteral("showMenuBar"), true);
  EXPECT_TRUE(toggle("showMenuBar").isChecked());
}

TEST_F(CapturePaneTest, AShortcutIsAppliedOnceItIsStored) {
  std::vector<std::pair<bool, bool>> applied;
  show({.applyHotkeySetting = [&] { applied.emplace_back(settings().captureHotkey(), settings().quickFindHotkey()); }});
  click("captureHotkey");
  click("quickFindHotkey");
  click("captureHotkey");
  EXPECT_THAT(applied, ElementsAre(std::pair(true, false), std::pair(true, true), std::pair(false, true)));
}

TEST_F(CapturePaneTest, AShortcutThatAnotherProcessSwitchesIsShownAndNotAppliedHere) {
  int applied = 0;
  show({.applyHotkeySetting = [&applied] { ++applied; }});
  setElsewhere(QStringLiteral("captureHotkey"), true);
  EXPECT_TRUE(toggle("captureHotkey").isChecked());
  EXPECT_EQ(applied, 0);
}

}  // namespace
}  // namespace Nimbrel
