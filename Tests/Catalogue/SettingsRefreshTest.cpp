#include "Catalogue/SettingsFixture.h"

#include <gmock/gmock.h>

#include <QJsonArray>

#include <chrono>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::text;

using SettingsRefreshTest = Testing::SettingsFixture;

TEST_F(SettingsRefreshTest, AnInvalidCaptureDelayOfAnotherProcessLeavesTheFieldAsItIs) {
  store("captureDelay", 3);
  const auto settings = load();
  loadInOtherProcess()->captureDelay.set(5);
  settings->refreshFromDisk();
  EXPECT_EQ(settings->captureDelay(), 3);
}

TEST_F(SettingsRefreshTest, MalformedRulesStandUntilTheNextChangeOfRules) {
  store("automationRules", dataValue("[{\"id\":"));
  const auto settings = load();
  settings->refreshFromDisk();
  EXPECT_EQ(stored("automationRules"), dataValue("[{\"id\":"));
  settings->automationRules.set({{.id = QUuid::createUuid()}});
  settings->automationRules.set({});
  EXPECT_EQ(stored("automationRules"), dataValue("[]"));
}

TEST_F(SettingsRefreshTest, AChangeOfSourcesReachesTheOtherProcessAndAsksToWatch) {
  const auto companion = load();
  loadInOtherProcess()->sources.set({"/new"});
  const auto refreshed = companion->refreshFromDisk();
  EXPECT_TRUE(refreshed.watch);
  EXPECT_FALSE(refreshed.hotkeys);
  EXPECT_THAT(companion->sources(), ElementsAre("/new"));
}

TEST_F(SettingsRefreshTest, AChangeOfTheSystemsFolderIsFollowedWhereNoSourcesAreSet) {
  const auto companion = load();
  Defaults(folders_.preferences, "com.apple.screencapture").set(text("location"), text("/shots"));
  EXPECT_TRUE(companion->refreshFromDisk().watch);
  EXPECT_THAT(companion->sources(), ElementsAre("/shots"));
  EXPECT_EQ(stored("sources"), QJsonValue(QJsonArray{text("/shots")}));
}

TEST_F(SettingsRefreshTest, AChangeOfTheLibraryAsksToWatch) {
  const auto companion = load();
  loadInOtherProcess()->libraryRoot.set("/new");
  EXPECT_TRUE(companion->refreshFromDisk().watch);
  EXPECT_FALSE(companion->refreshFromDisk().watch);
}

TEST_F(SettingsRefreshTest, AChangeOfAHotkeyIsToldAsSuch) {
  const auto companion = load();
  loadInOtherProcess()->captureHotkey.set(true);
  const auto refreshed = companion->refreshFromDisk();
  EXPECT_FALSE(refreshed.watch);
  EXPECT_TRUE(refreshed.hotkeys);
  EXPECT_TRUE(companion->captureHotkey());
}

TEST_F(SettingsRefreshTest, AllSharedFieldsAreTakenOver) {
  const auto companion = load();
  const auto window = loadInOtherProcess();
  const AutomationRule rule{.id = QUuid::createUuid()};
  window->showMenuBar.set(false);
  window->autoFile.set(true);
  window->runOCR.set(false);
  window->renameOnFile.set(false);
  window->protectSensitive.set(false);
  window->gallerySort.set(GallerySort::oldest);
  window->galleryLayout.set(GalleryLayout::gallery);
  window->groupByDay.set(false);
  window->automationRules.set({rule});
  window->projects.set({"p"});
  window->syncRoot.set("/vault");
  window->captureDestination.set(CaptureDestination::library);
  window->captureDelay.set(3);
  window->quickFindHotkey.set(true);
  companion->refreshFromDisk();
  for (std::size_t i = 0; i < companion->all().size(); ++i) {
    EXPECT_EQ(companion->all()[i]->toJson(), window->all()[i]->toJson()) << companion->all()[i]->key().toStdString();
  }
}

TEST_F(SettingsRefreshTest, WhatMattersToOneWindowOnlyStaysWithEachProcess) {
  const auto companion = load();
  const auto window = loadInOtherProcess();
  window->thumbSize.set(250);
  window->heicQuality.set(0.5);
  window->inspectorWidth.set(400);
  window->savedSearches.set({"x"});
  companion->refreshFromDisk();
  EXPECT_EQ(companion->thumbSize(), 190);
  EXPECT_EQ(companion->heicQuality(), 0.9);
  EXPECT_EQ(companion->inspectorWidth(), 300);
  EXPECT_THAT(companion->savedSearches(), IsEmpty());
}

TEST_F(SettingsRefreshTest, ARemovedSyncFolderIsTakenOver) {
  store("syncRoot", text("/vault"));
  const auto companion = load();
  ASSERT_TRUE(companion->syncRoot());
  loadInOtherProcess()->syncRoot.set(std::nullopt);
  companion->refreshFromDisk();
  EXPECT_FALSE(companion->syncRoot());
}

TEST_F(SettingsRefreshTest, ChangesAreToldOnceAndAPollWithoutChangeTellsNothing) {
  const auto settings = load();
  QStringList told;
  QObject::connect(settings.get(), &Settings::changed, settings.get(), [&](const QString& key) { told << key; });
  settings->autoFile.set(true);
  settings->autoFile.set(true);
  loadInOtherProcess()->projects.set({"p"});
  settings->refreshFromDisk();
  settings->refreshFromDisk();
  EXPECT_EQ(told, (QStringList{text("autoFile"), text("projects")}));
}

TEST_F(SettingsRefreshTest, APollWithoutChangeWritesNothing) {
  const auto settings = load();
  settings->autoFile.set(true);
  const auto file = folder_.path("config/suite.json");
  std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) - std::chrono::hours(1));
  const auto before = std::filesystem::last_write_time(file);
  settings->refreshFromDisk();
  EXPECT_EQ(std::filesystem::last_write_time(file), before);
}

}  // namespace
}  // namespace Nimbrel
