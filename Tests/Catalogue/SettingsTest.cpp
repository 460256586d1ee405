#include "Catalogue/SettingsFixture.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonObject>

namespace Nimbrel {
namespace {

using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Testing::TemporaryFolder;
using Testing::text;

using SettingsTest = Testing::SettingsFixture;

class ConfiguredTool final : public ScreenshotTool {
 public:
  [[nodiscard]] std::optional<std::string> configuredFolder() const override { return "~/Tool"; }
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

TEST_F(SettingsTest, AFolderThatIsNoAbsolutePathLiesBelowHome) {
  const auto settings = load();
  settings->sources.set({"Shots", ""});
  settings->libraryRoot.set("Library/");
  EXPECT_THAT(settings->sourceFolders(), ElementsAre(folder_.path("home/Shots")));
  EXPECT_EQ(settings->libraryFolder(), folder_.path("home/Library"));
  settings->libraryRoot.set("");
  EXPECT_EQ(settings->libraryFolder(), folder_.path("home/Pictures/Nimbrel"));
}

TEST_F(SettingsTest, TheSyncFolderIsAbsoluteWithoutASlashAtItsEnd) {
  const auto settings = load();
  EXPECT_EQ(settings->syncFolder(), std::nullopt);
  settings->syncRoot.set("/vault/");
  EXPECT_EQ(settings->syncFolder(), "/vault");
  settings->syncRoot.set("Vault");
  EXPECT_EQ(settings->syncFolder(), folder_.path("home/Vault"));
  settings->syncRoot.set("");
  EXPECT_EQ(settings->syncFolder(), std::nullopt);
}

TEST_F(SettingsTest, AnEmptySyncFolderIsAbsent) {
  store("syncRoot", text(""));
  EXPECT_FALSE(load()->syncRoot());
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
