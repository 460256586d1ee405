#include "Catalogue/Settings.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonObject>

#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Testing::TemporaryFolder;
using Strings = std::vector<std::string>;

class ConfiguredTool final : public ScreenshotTool {
 public:
  [[nodiscard]] std::optional<std::string> configuredFolder() const override { return "~/Tool"; }
};

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

class SettingsTest : public ::testing::Test {
 protected:
  /// The settings of a process that starts now.
  [[nodiscard]] std::unique_ptr<Settings> load() {
    suites_.push_back(std::make_unique<Defaults>(folders_.preferences, "suite"));
    return std::make_unique<Settings>(*suites_.back(), folders_, tool_);
  }
  void store(const char* key, const QJsonValue& value) {
    Defaults(folders_.preferences, "suite").set(QString::fromUtf8(key), value);
  }
  [[nodiscard]] QJsonValue stored(const char* key) const {
    return Defaults(folders_.preferences, "suite").value(QString::fromUtf8(key));
  }
  /// Two settings that see one suite as two processes do: through files of different names.
  [[nodiscard]] std::unique_ptr<Settings> loadInOtherProcess() {
    if (!std::filesystem::exists(folder_.path("Other"))) {
      std::filesystem::create_directories(folders_.preferences);
      std::filesystem::create_directory_symlink(folders_.preferences, folder_.path("Other"));
    }
    suites_.push_back(std::make_unique<Defaults>(folder_.path("Other"), "suite"));
    return std::make_unique<Settings>(*suites_.back(), folders_, tool_);
  }

  TemporaryFolder folder_;
  UserFolders folders_{
      .home = folder_.path("home"), .applicationSupport = folder_.path("data"), .preferences = folder_.path("config")};
  NullScreenshotTool tool_;
  std::vector<std::unique_ptr<Defaults>> suites_;
};

TEST_F(SettingsTest, ASuiteWithoutKeysGivesTheDefaults) {
  const auto settings = load();
  EXPECT_EQ(settings->libraryRoot(), folder_.path("home/Pictures/Nimbrel"));
  EXPECT_THAT(settings->sources(), ElementsAre(folder_.path("home/Desktop")));
  EXPECT_FALSE(settings->autoFile());
  EXPECT_TRUE(settings->runOCR());
  EXPECT_TRUE(settings->renameOnFile());
  EXPECT_FALSE(settings->captureHotkey());
  EXPECT_TRUE(settings->showMenuBar());
  EXPECT_THAT(settings->savedSearches(), IsEmpty());
  EXPECT_FALSE(settings->quickFindHotkey());
  EXPECT_EQ(settings->heicQuality(), 0.9);
  EXPECT_EQ(settings->thumbSize(), 190);
  EXPECT_EQ(settings->galleryLayout(), GalleryLayout::grid);
  EXPECT_EQ(settings->gallerySort(), GallerySort::newest);
  EXPECT_TRUE(settings->groupByDay());
  EXPECT_EQ(settings->inspectorWidth(), 300);
  EXPECT_EQ(settings->captureDestination(), CaptureDestination::inbox);
  EXPECT_EQ(settings->captureDelay(), 0);
  EXPECT_TRUE(settings->protectSensitive());
  EXPECT_THAT(settings->automationRules(), IsEmpty());
  EXPECT_THAT(settings->projects(), IsEmpty());
  EXPECT_FALSE(settings->syncRoot());
}

TEST_F(SettingsTest, AValueOfTheWrongTypeReadsAsItsDefault) {
  for (const auto* key : {"libraryRoot",     "sources",          "autoFile",        "runOCR",
                          "renameOnFile",    "captureHotkey",    "showMenuBar",     "savedSearches",
                          "quickFindHotkey", "heicQuality",      "thumbSize",       "galleryLayout",
                          "gallerySort",     "groupByDay",       "inspectorWidth",  "captureDestination",
                          "captureDelay",    "protectSensitive", "automationRules", "projects",
                          "syncRoot"}) {
    store(key, QJsonObject{{text("a"), 1}});
  }
  const auto settings = load();
  const auto defaults = [&] {
    TemporaryFolder empty;
    Defaults suite(empty.path(), "suite");
    QJsonObject values;
    Settings fresh(suite, folders_, tool_);
    for (const auto* preference : fresh.all()) values.insert(preference->key(), preference->toJson());
    return values;
  }();
  for (const auto* preference : settings->all()) {
    EXPECT_EQ(preference->toJson(), defaults.value(preference->key())) << preference->key().toStdString();
  }
}

TEST_F(SettingsTest, AStoredZeroOrOneIsNoBoolean) {
  store("runOCR", 0);
  store("autoFile", 1);
  EXPECT_TRUE(load()->runOCR());
  EXPECT_FALSE(load()->autoFile());
}

TEST_F(SettingsTest, AListWithAnElementOfAnotherTypeReadsAsItsDefault) {
  store("projects", QJsonArray{text("a"), 1});
  EXPECT_THAT(load()->projects(), IsEmpty());
}

TEST_F(SettingsTest, AWholeNumberReadsAsAFraction) {
  store("heicQuality", 1);
  EXPECT_EQ(load()->heicQuality(), 1.0);
}

TEST_F(SettingsTest, EveryFieldComesBackAtTheNextStart) {
  const AutomationRule rule{.id = QUuid::createUuid(), .name = "r", .tag = "t"};
  {
    const auto settings = load();
    settings->libraryRoot.set("/library");
    settings->sources.set({"/a", "/b"});
    settings->autoFile.set(true);
    settings->heicQuality.set(0.75);
    settings->galleryLayout.set(GalleryLayout::gallery);
    settings->gallerySort.set(GallerySort::name);
    settings->captureDestination.set(CaptureDestination::library);
    settings->captureDelay.set(10);
    settings->automationRules.set({rule});
    settings->syncRoot.set("/vault");
  }
  const auto settings = load();
  EXPECT_EQ(settings->libraryRoot(), "/library");
  EXPECT_THAT(settings->sources(), ElementsAre("/a", "/b"));
  EXPECT_TRUE(settings->autoFile());
  EXPECT_EQ(settings->heicQuality(), 0.75);
  EXPECT_EQ(settings->galleryLayout(), GalleryLayout::gallery);
  EXPECT_EQ(settings->gallerySort(), GallerySort::name);
  EXPECT_EQ(settings->captureDestination(), CaptureDestination::library);
  EXPECT_EQ(settings->captureDelay(), 10);
  EXPECT_THAT(settings->automationRules(), ElementsAre(rule));
  EXPECT_EQ(settings->syncRoot(), "/vault");
}

TEST_F(SettingsTest, ValuesAreStoredUnderTheNamesOfTheirFields) {
  const auto settings = load();
  settings->captureDestination.set(CaptureDestination::library);
  settings->thumbSize.set(200);
  settings->automationRules.set({});
  settings->syncRoot.set("/vault");
  EXPECT_EQ(stored("captureDestination"), QJsonValue(text("Library")));
  EXPECT_EQ(stored("thumbSize"), QJsonValue(200));
  EXPECT_EQ(stored("automationRules"), dataValue("[]"));
  EXPECT_EQ(stored("syncRoot"), QJsonValue(text("/vault")));
  settings->syncRoot.set(std::nullopt);
  EXPECT_TRUE(stored("syncRoot").isUndefined());
}

TEST_F(SettingsTest, TheSyncFolderIsWrittenStraightBackWhenLoading) {
  store("syncRoot", 5);
  static_cast<void>(load());
  EXPECT_TRUE(stored("syncRoot").isUndefined());
}

TEST_F(SettingsTest, TheInspectorWidthIsHeldInItsRangeOnLoadingOnly) {
  store("inspectorWidth", 100);
  EXPECT_EQ(load()->inspectorWidth(), 240);
  store("inspectorWidth", 900);
  const auto settings = load();
  EXPECT_EQ(settings->inspectorWidth(), 460);
  settings->inspectorWidth.set(100);
  EXPECT_EQ(settings->inspectorWidth(), 100);
  EXPECT_EQ(stored("inspectorWidth").toDouble(), 100);
  EXPECT_EQ(load()->inspectorWidth(), 240);
}

TEST_F(SettingsTest, AnInvalidCaptureDelayLoadsAsNone) {
  store("captureDelay", 5);
  EXPECT_EQ(load()->captureDelay(), 0);
  store("captureDelay", 3);
  EXPECT_EQ(load()->captureDelay(), 3);
}

TEST_F(SettingsTest, AnInvalidCaptureDelayOfAnotherProcessLeavesTheFieldAsItIs) {
  store("captureDelay", 3);
  const auto settings = load();
  loadInOtherProcess()->captureDelay.set(5);
  settings->refreshFromDisk();
  EXPECT_EQ(settings->captureDelay(), 3);
}

TEST_F(SettingsTest, AnUnknownCaseLoadsAsTheFirstOne) {
  store("galleryLayout", text("spiral"));
  store("gallerySort", text("Name"));
  store("captureDestination", text("Moon"));
  const auto settings = load();
  EXPECT_EQ(settings->galleryLayout(), GalleryLayout::grid);
  EXPECT_EQ(settings->gallerySort(), GallerySort::newest);
  EXPECT_EQ(settings->captureDestination(), CaptureDestination::inbox);
}

TEST_F(SettingsTest, RulesThatCannotBeDecodedAreNone) {
  store("automationRules", dataValue("[{\"id\":"));
  EXPECT_THAT(load()->automationRules(), IsEmpty());
}

TEST_F(SettingsTest, MalformedRulesStandUntilTheNextChangeOfRules) {
  store("automationRules", dataValue("[{\"id\":"));
  const auto settings = load();
  settings->refreshFromDisk();
  EXPECT_EQ(stored("automationRules"), dataValue("[{\"id\":"));
  settings->automationRules.set({{.id = QUuid::createUuid()}});
  settings->automationRules.set({});
  EXPECT_EQ(stored("automationRules"), dataValue("[]"));
}

TEST_F(SettingsTest, SystemScreenshotsLandOnTheDesktopWhereNothingIsSet) {
  EXPECT_EQ(Settings::systemScreenshotFolder(folders_, tool_), folder_.path("home/Desktop"));
}

TEST_F(SettingsTest, SystemScreenshotsLandWhereTheSuiteSays) {
  Defaults(folders_.preferences, "com.apple.screencapture").set(text("location"), text("/shots"));
  EXPECT_EQ(Settings::systemScreenshotFolder(folders_, ConfiguredTool()), "/shots");
  EXPECT_THAT(load()->sources(), ElementsAre("/shots"));
}

TEST_F(SettingsTest, ALocationThatIsEmptyIsTheDesktop) {
  Defaults(folders_.preferences, "com.apple.screencapture").set(text("location"), text(""));
  EXPECT_EQ(Settings::systemScreenshotFolder(folders_, ConfiguredTool()), folder_.path("home/Desktop"));
}

TEST_F(SettingsTest, ATildeOfTheLocationIsExpanded) {
  Defaults(folders_.preferences, "com.apple.screencapture").set(text("location"), text("~/Shots"));
  EXPECT_EQ(Settings::systemScreenshotFolder(folders_, tool_), folder_.path("home/Shots"));
}

TEST_F(SettingsTest, WithoutTheSuiteTheDesktopsOwnToolIsAsked) {
  EXPECT_EQ(Settings::systemScreenshotFolder(folders_, ConfiguredTool()), folder_.path("home/Tool"));
}

TEST_F(SettingsTest, AFiledShotLiesInItsYearAndMonth) {
  const auto settings = load();
  settings->libraryRoot.set("/library");
  const Timestamp second = std::chrono::sys_days{std::chrono::year{2026} / 3 / 2};
  EXPECT_EQ(settings->libraryLocation(second, "a.png"), "/library/2026/2026-03/a.png");
}

TEST_F(SettingsTest, SourceFoldersHaveNoSlashAtTheirEnd) {
  const auto settings = load();
  settings->sources.set({"/a/", "/b"});
  EXPECT_THAT(settings->sourceFolders(), ElementsAre("/a", "/b"));
}

TEST_F(SettingsTest, AChangeOfSourcesReachesTheOtherProcessAndAsksToWatch) {
  const auto companion = load();
  loadInOtherProcess()->sources.set({"/new"});
  const auto refreshed = companion->refreshFromDisk();
  EXPECT_TRUE(refreshed.watch);
  EXPECT_FALSE(refreshed.hotkeys);
  EXPECT_THAT(companion->sources(), ElementsAre("/new"));
}

TEST_F(SettingsTest, AChangeOfTheSystemsFolderIsFollowedWhereNoSourcesAreSet) {
  const auto companion = load();
  Defaults(folders_.preferences, "com.apple.screencapture").set(text("location"), text("/shots"));
  EXPECT_TRUE(companion->refreshFromDisk().watch);
  EXPECT_THAT(companion->sources(), ElementsAre("/shots"));
  EXPECT_EQ(stored("sources"), QJsonValue(QJsonArray{text("/shots")}));
}

TEST_F(SettingsTest, AFolderThatIsNoAbsolutePathLiesBelowHome) {
  const auto settings = load();
  settings->sources.set({"Shots", ""});
  settings->libraryRoot.set("Library/");
  EXPECT_THAT(settings->sourceFolders(), ElementsAre(folder_.path("home/Shots")));
  EXPECT_EQ(settings->libraryFolder(), folder_.path("home/Library"));
  settings->libraryRoot.set("");
  EXPECT_EQ(settings->libraryFolder(), folder_.path("home/Pictures/Nimbrel"));
}

TEST_F(SettingsTest, AnEmptySyncFolderIsAbsent) {
  store("syncRoot", text(""));
  EXPECT_FALSE(load()->syncRoot());
}

TEST_F(SettingsTest, AChangeOfTheLibraryAsksToWatch) {
  const auto companion = load();
  loadInOtherProcess()->libraryRoot.set("/new");
  EXPECT_TRUE(companion->refreshFromDisk().watch);
  EXPECT_FALSE(companion->refreshFromDisk().watch);
}

TEST_F(SettingsTest, AChangeOfAHotkeyIsToldAsSuch) {
  const auto companion = load();
  loadInOtherProcess()->captureHotkey.set(true);
  const auto refreshed = companion->refreshFromDisk();
  EXPECT_FALSE(refreshed.watch);
  EXPECT_TRUE(refreshed.hotkeys);
  EXPECT_TRUE(companion->captureHotkey());
}

TEST_F(SettingsTest, AllSharedFieldsAreTakenOver) {
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

TEST_F(SettingsTest, WhatMattersToOneWindowOnlyStaysWithEachProcess) {
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

TEST_F(SettingsTest, ARemovedSyncFolderIsTakenOver) {
  store("syncRoot", text("/vault"));
  const auto companion = load();
  ASSERT_TRUE(companion->syncRoot());
  loadInOtherProcess()->syncRoot.set(std::nullopt);
  companion->refreshFromDisk();
  EXPECT_FALSE(companion->syncRoot());
}

TEST_F(SettingsTest, ChangesAreToldOnceAndAPollWithoutChangeTellsNothing) {
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

TEST_F(SettingsTest, APollWithoutChangeWritesNothing) {
  const auto settings = load();
  settings->autoFile.set(true);
  const auto file = folder_.path("config/suite.json");
  std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) - std::chrono::hours(1));
  const auto before = std::filesystem::last_write_time(file);
  settings->refreshFromDisk();
  EXPECT_EQ(std::filesystem::last_write_time(file), before);
}

TEST_F(SettingsTest, AFileCutInHalfGivesTheDefaultsAndIsKeptAside) {
  folder_.write("config/suite.json", "{\"autoFile\": true, \"sour");
  const auto settings = load();
  EXPECT_FALSE(settings->autoFile());
  settings->runOCR.set(false);
  EXPECT_THAT(contentOf(folder_.path("config/suite.json")), HasSubstr("\"runOCR\": false"));
  std::size_t copies = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.path("config"))) {
    if (entry.path().string().find(".damaged-") != std::string::npos) ++copies;
  }
  EXPECT_EQ(copies, 1U);
}

}  // namespace
}  // namespace Nimbrel
