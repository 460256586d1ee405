#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace Nimbrel {
namespace {

using Testing::ProgramOutput;
using Testing::StoreHome;

class SettingsCommandTest : public ::testing::Test {
 protected:
  [[nodiscard]] ProgramOutput settings(const std::vector<std::string>& words) const {
    QStringList arguments{QStringLiteral("settings")};
    for (const auto& word : words) arguments << QString::fromStdString(word);
    return Testing::runProgram("nimbrelctl", arguments, home_.folder().path());
  }
  /// Sets a value, and returns how it reads then.
  [[nodiscard]] std::string after(const std::string& key, const std::string& value) const {
    const auto set = settings({key, value});
    EXPECT_EQ(set.status, 0) << set.errors;
    return settings({key, "--json"}).output;
  }

  StoreHome home_;
};

TEST_F(SettingsCommandTest, ListsAllSettings) {
  const auto object = QJsonDocument::fromJson(QByteArray::fromStdString(settings({"--json"}).output)).object();
  EXPECT_EQ(object.size(), 21);
  EXPECT_EQ(object.value(QStringLiteral("thumbSize")), QJsonValue(190));
  EXPECT_TRUE(object.value(QStringLiteral("syncRoot")).isNull());
  EXPECT_TRUE(object.value(QStringLiteral("automationRules")).isArray());
}

TEST_F(SettingsCommandTest, ReadsOne) {
  EXPECT_EQ(settings({"gallerySort"}).output, "newest\n");
  EXPECT_EQ(settings({"gallerySort", "--json"}).output, "\"newest\"\n");
  EXPECT_EQ(settings({"runOCR"}).output, "true\n");
}

TEST_F(SettingsCommandTest, SetsEachKindOfValue) {
  EXPECT_EQ(after("autoFile", "true"), "true\n");
  EXPECT_EQ(after("heicQuality", "1"), "1\n");
  EXPECT_EQ(after("captureDelay", "10"), "10\n");
  EXPECT_EQ(after("gallerySort", "name"), "\"name\"\n");
  EXPECT_EQ(after("sources", R"(["/a", "/b"])"), "[\"/a\",\"/b\"]\n");
  EXPECT_EQ(after("libraryRoot", "/some where"), "\"/some where\"\n");
  EXPECT_EQ(after("libraryRoot", "\"/in quotes\""), "\"/in quotes\"\n");
  EXPECT_EQ(after("syncRoot", "/vault"), "\"/vault\"\n");
  EXPECT_EQ(after("syncRoot", "null"), "null\n");
}

TEST_F(SettingsCommandTest, StoresAValueOutOfRangeAsTheSetterDoes) {
  EXPECT_EQ(settings({"inspectorWidth", "100"}).status, 0);
  EXPECT_EQ(home_.suiteOfOtherProcess()->value(QStringLiteral("inspectorWidth")).toDouble(), 100);
  EXPECT_EQ(settings({"inspectorWidth"}).output, "240\n");
}

TEST_F(SettingsCommandTest, AValueOfTheWrongTypeFailsAndChangesNothing) {
  for (const auto& [key, value] : std::vector<std::pair<std::string, std::string>>{{"autoFile", "1"},
                                                                                   {"autoFile", "yes"},
                                                                                   {"heicQuality", "high"},
                                                                                   {"captureDelay", "1.5"},
                                                                                   {"sources", "/a"},
                                                                                   {"gallerySort", "random"},
                                                                                   {"automationRules", "[{}]"},
                                                                                   {"thumbSize", "null"}}) {
    const auto output = settings({key, value});
    EXPECT_EQ(output.status, 1) << key << " " << value;
    EXPECT_EQ(output.errors, "nimbrelctl: not a value for " + key + ": " + value + "\n");
  }
  EXPECT_EQ(settings({"autoFile"}).output, "false\n");
}

TEST_F(SettingsCommandTest, AValueThatCannotBeWrittenFails) {
  home_.folder().makeFolder(".config/Nimbrel/com.halderquist.nimbrel.json");
  const auto output = settings({"autoFile", "true"});
  EXPECT_EQ(output.status, 1);
  EXPECT_NE(output.errors.find("nimbrelctl: the settings cannot be written\n"), std::string::npos) << output.errors;
}

TEST_F(SettingsCommandTest, AnUnknownSettingIsWrongUsage) { EXPECT_EQ(settings({"nonsense"}).status, 2); }

}  // namespace
}  // namespace Nimbrel
