// The settings window while other processes read and set the same settings, and over a file that fails it.

#include "Views/Settings/SettingsViewFixture.h"

#include "Model/AppIdentity.h"
#include "Support/LogRecorder.h"
#include "Support/ProgramRun.h"
#include "Support/ReadOnlyFile.h"
#include "Views/Settings/RuleGroup.h"
#include "Views/Shared/ElidedLabel.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::waitUntil;

class SharedSettingsTest : public Testing::WorkerSettingsFixture {
 protected:
  [[nodiscard]] Testing::ProgramOutput otherProcess(const QStringList& words) const {
    return Testing::runProgram("nimbrelctl", QStringList{QStringLiteral("settings")} + words, home_.folder().path());
  }
  /// A process of its own sets that, and has ended when this returns.
  void setInOtherProcess(const char* key, const char* value) const {
    const auto ended = otherProcess({QString::fromUtf8(key), QString::fromUtf8(value)});
    EXPECT_EQ(ended.status, 0) << ended.errors;
  }
  /// What a process that starts now reads, as JSON.
  [[nodiscard]] std::string seenByOtherProcess(const char* key) const {
    auto seen = otherProcess({QString::fromUtf8(key), QStringLiteral("--json")}).output;
    while (seen.ends_with('\n')) seen.pop_back();
    return seen;
  }
  [[nodiscard]] std::vector<std::string> rows(const char* list) const {
    std::vector<std::string> texts;
    for (const auto* row : all<ElidedLabel>(list)) texts.push_back(row->fullText().toStdString());
    return texts;
  }
  void addProject(const char* name) const {
    type("newProject", QString::fromUtf8(name));
    click("addProject");
  }
  /// The file under its own name, which is not that of the suite of another process.
  [[nodiscard]] std::string file() const {
    return home_.folders().preferences + "/" + AppIdentity::bundleIdentifier() + ".json";
  }
  [[nodiscard]] std::vector<std::string> keptAside() const {
    std::vector<std::string> contents;
    for (const auto& entry : std::filesystem::directory_iterator(home_.folders().preferences)) {
      if (entry.path().string().starts_with(file() + ".damaged-")) {
        contents.push_back(Testing::contentOf(entry.path()));
      }
    }
    return contents;
  }
};

TEST_F(SharedSettingsTest, WhatAnotherProcessSetsAppearsByItself) {
  show();
  setInOtherProcess("autoFile", "true");
  setInOtherProcess("showMenuBar", "false");
  setInOtherProcess("syncRoot", "/vault");
  setInOtherProcess("projects", R"(["Launch"])");
  EXPECT_TRUE(waitUntil([this] { return rows("projects.entry") == std::vector<std::string>{"Launch"}; }));
  EXPECT_TRUE(toggle("autoFile").isChecked());
  EXPECT_FALSE(toggle("showMenuBar").isChecked());
  EXPECT_EQ(at<ElidedLabel>("syncPath").fullText(), QStringLiteral("/vault"));
}

TEST_F(SharedSettingsTest, AFolderThatAnotherProcessAddsIsWatchedAndScanned) {
  const auto captures = home_.path("Captures");
  home_.addFile(captures + "/Screenshot 1.png");
  show();
  setInOtherProcess("sources", (R"([")" + captures + R"("])").c_str());
  EXPECT_TRUE(waitUntil([&] { return rows("folders.entry") == std::vector{captures}; }));
  EXPECT_THAT(watched(), Contains(captures));
  EXPECT_THAT(Testing::namesOf(store_->shots()), ElementsAre("Screenshot 1.png"));
}

TEST_F(SharedSettingsTest, ARuleThatAnotherProcessChangesIsShownInItsOpenGroup) {
  settings().automationRules.set({{.id = QUuid::createUuid(), .name = "a", .tag = "before"}});
  show();
  auto& group = at<RuleGroup>("rule");
  group.setOpen(true);
  auto rules = QJsonDocument(settings().automationRules.toJson().toArray()).toJson();
  setInOtherProcess("automationRules", rules.replace("before", "after").constData());
  EXPECT_TRUE(waitUntil([this] { return field("rule.tag").text() == QStringLiteral("after"); }));
  EXPECT_EQ(&at<RuleGroup>("rule"), &group) << "the group stays, and stays open";
}

TEST_F(SharedSettingsTest, WhatIsDoneInTheWindowIsThereForOtherProcessesAtOnce) {
  show();
  click("runOCR");
  click("showMenuBar");
  addProject("Launch");
  click("addRule");
  type("rule.containsText", QStringLiteral("invoice"));
  EXPECT_EQ(seenByOtherProcess("runOCR"), "false");
  EXPECT_EQ(seenByOtherProcess("showMenuBar"), "false");
  EXPECT_EQ(seenByOtherProcess("projects"), R"(["Launch"])");
  EXPECT_THAT(seenByOtherProcess("automationRules"), HasSubstr("invoice"));
}

TEST_F(SharedSettingsTest, WhatTwoProcessesSetAtTheSameTimeIsAllThere) {
  constexpr int count = 60;
  constexpr int projects = 20;
  show();
  const auto other = Testing::startProgram(
      SETTINGS_WRITER,
      {QString::fromStdString(home_.folders().preferences), QString::fromStdString(AppIdentity::bundleIdentifier()),
       QStringLiteral("other"), QString::number(count)},
      home_.folder().path());
  int turns = 0;
  for (; turns < projects || other->state() != QProcess::NotRunning; ++turns) {
    click("renameOnFile");
    if (turns < projects) addProject(("Project " + std::to_string(turns)).c_str());
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(other->exitCode(), 0);
  const auto suite = home_.suiteOfOtherProcess();
  EXPECT_EQ(std::ranges::count_if(suite->keys(), [](const QString& key) { return key.startsWith(u"other"); }), count);
  EXPECT_THAT(settings().projects(), SizeIs(projects));
  store_->poll();
  EXPECT_THAT(settings().projects(), SizeIs(projects));
  EXPECT_THAT(rows("projects.entry"), SizeIs(projects));
  EXPECT_EQ(seenByOtherProcess("renameOnFile"), turns % 2 == 0 ? "true" : "false");
}

TEST_F(SharedSettingsTest, OfOneListSetTwiceBetweenTwoLooksTheLastStandsInBoth) {
  show();
  addProject("Here");
  setInOtherProcess("projects", R"(["There"])");
  addProject("Later");
  EXPECT_EQ(seenByOtherProcess("projects"), R"(["Here","Later"])");
  store_->poll();
  EXPECT_THAT(rows("projects.entry"), ElementsAre("Here", "Later"));
  setInOtherProcess("projects", R"(["There"])");
  store_->poll();
  EXPECT_THAT(rows("projects.entry"), ElementsAre("There"));
}

TEST_F(SharedSettingsTest, AFileThatWasCutCountsAsEmptyAndIsKeptAside) {
  settings().projects.set({"Launch"});
  settings().autoFile.set(true);
  show();
  const auto whole = Testing::contentOf(file());
  std::filesystem::resize_file(file(), whole.size() / 2);
  const Testing::LogRecorder log;
  ASSERT_TRUE(waitUntil([this] { return !toggle("autoFile").isChecked(); }));
  EXPECT_THAT(rows("projects.entry"), IsEmpty());
  EXPECT_THAT(keptAside(), ElementsAre(whole.substr(0, whole.size() / 2)));
  EXPECT_THAT(log.lines(), Contains(HasSubstr("is damaged, kept as")));
  click("autoFile");
  EXPECT_EQ(seenByOtherProcess("autoFile"), "true");
  EXPECT_THAT(keptAside(), SizeIs(1));
}

TEST_F(SharedSettingsTest, OverAFileThatCannotBeWrittenTheWindowHoldsWhatWasSetAndWritesItLater) {
  settings().projects.set({"Launch"});
  show();
  const auto before = Testing::contentOf(file());
  const Testing::LogRecorder log;
  {
    const Testing::ReadOnlyFile readOnly(file());
    click("autoFile");
    store_->poll();
    EXPECT_TRUE(toggle("autoFile").isChecked());
    EXPECT_TRUE(settings().autoFile());
    EXPECT_EQ(Testing::contentOf(file()), before);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("cannot be written")));
  }
  store_->poll();
  EXPECT_EQ(seenByOtherProcess("autoFile"), "true");
  EXPECT_TRUE(settings().renameOnFile.set(false)) << "the failure is forgotten";
  EXPECT_THAT(log.lines(), SizeIs(1));
}

}  // namespace
}  // namespace Nimbrel
