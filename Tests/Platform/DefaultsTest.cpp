#include "Platform/Defaults.h"

#include "Support/LogRecorder.h"
#include "Support/ReadOnlyFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>

#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::contentOf;
using ::testing::HasSubstr;
using Testing::LogRecorder;
using Testing::TemporaryFolder;

const auto key = QStringLiteral("key");

class DefaultsTest : public ::testing::Test {
 protected:
  [[nodiscard]] Defaults open() const { return Defaults(folder_.path("Nimbrel"), "suite"); }
  [[nodiscard]] std::string file() const { return folder_.path("Nimbrel/suite.json"); }
  [[nodiscard]] std::vector<std::string> damagedCopies() const {
    std::vector<std::string> copies;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path("Nimbrel"))) {
      if (entry.path().string().find(".damaged-") != std::string::npos) copies.push_back(entry.path().string());
    }
    return copies;
  }

  TemporaryFolder folder_;
  LogRecorder log_;
};

TEST_F(DefaultsTest, AMissingKeyIsToldFromFalseAndEmpty) {
  Defaults defaults(folder_.path("Nimbrel"), "suite");
  defaults.set(QStringLiteral("no"), false);
  defaults.set(QStringLiteral("empty"), QString());
  EXPECT_TRUE(defaults.value(key).isUndefined());
  EXPECT_TRUE(defaults.value(QStringLiteral("no")).isBool());
  EXPECT_TRUE(defaults.value(QStringLiteral("empty")).isString());
}

TEST_F(DefaultsTest, EveryTypeComesBackInAnotherInstance) {
  const QJsonArray list{QStringLiteral("a"), QStringLiteral("")};
  {
    Defaults defaults(folder_.path("Nimbrel"), "suite");
    defaults.set(QStringLiteral("flag"), true);
    defaults.set(QStringLiteral("whole"), qint64{9007199254740993});
    defaults.set(QStringLiteral("fraction"), 0.9);
    defaults.set(QStringLiteral("text"), QStringLiteral("true"));
    defaults.set(QStringLiteral("list"), list);
    defaults.set(QStringLiteral("bytes"), dataValue("\x00\xFF{"));
  }
  const Defaults defaults(folder_.path("Nimbrel"), "suite");
  EXPECT_EQ(defaults.value(QStringLiteral("flag")), QJsonValue(true));
  EXPECT_EQ(defaults.value(QStringLiteral("whole")).toInteger(), 9007199254740993);
  EXPECT_EQ(defaults.value(QStringLiteral("fraction")), QJsonValue(0.9));
  EXPECT_EQ(defaults.value(QStringLiteral("text")), QJsonValue(QStringLiteral("true")));
  EXPECT_EQ(defaults.value(QStringLiteral("list")), QJsonValue(list));
  EXPECT_EQ(dataFrom(defaults.value(QStringLiteral("bytes"))), QByteArray("\x00\xFF{"));
}

TEST_F(DefaultsTest, ChangesAreOnDiskAtOnceAndTheFolderIsTheUsersAlone) {
  Defaults defaults(folder_.path("Nimbrel"), "suite");
  defaults.set(key, 5);
  EXPECT_THAT(contentOf(file()), HasSubstr("\"key\": 5"));
  defaults.remove(key);
  EXPECT_EQ(contentOf(file()).find("key"), std::string::npos);
  EXPECT_EQ(std::filesystem::status(folder_.path("Nimbrel")).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(DefaultsTest, SynchronizingPicksUpWhatAnotherInstanceWrote) {
  Defaults mine(folder_.path("Nimbrel"), "suite");
  mine.set(QStringLiteral("mine"), 1);
  // An instance of another process, as far as the library can tell: it has a file of its own name for the same inode.
  std::filesystem::create_directory_symlink(folder_.path("Nimbrel"), folder_.path("Other"));
  Defaults theirs(folder_.path("Other"), "suite");
  theirs.set(key, QStringLiteral("new"));
  EXPECT_TRUE(mine.value(key).isUndefined());
  mine.synchronize();
  EXPECT_EQ(mine.value(key).toString(), QStringLiteral("new"));
}

TEST_F(DefaultsTest, TwoProcessesThatChangeDifferentKeysAtTheSameMomentLoseNeither) {
  constexpr int count = 60;
  QProcess other;
  other.start(QStringLiteral(SETTINGS_WRITER),
              {QString::fromStdString(folder_.path("Nimbrel")), QStringLiteral("suite"), QStringLiteral("theirs"),
               QString::number(count)});
  ASSERT_TRUE(other.waitForStarted());
  Defaults mine(folder_.path("Nimbrel"), "suite");
  for (int i = 0; i < count; ++i) mine.set(QStringLiteral("mine%1").arg(i), i);
  ASSERT_TRUE(other.waitForFinished());
  EXPECT_EQ(other.exitCode(), 0);
  mine.synchronize();
  EXPECT_EQ(mine.keys().size(), 2 * count);
}

TEST_F(DefaultsTest, AFileCutInHalfIsEmptyAndKeptAside) {
  const std::string half = "{\n    \"sources\": [\n        \"/home";
  folder_.write("Nimbrel/suite.json", half);
  {
    Defaults defaults(folder_.path("Nimbrel"), "suite");
    EXPECT_TRUE(defaults.keys().isEmpty());
    defaults.set(key, true);
  }
  EXPECT_THAT(contentOf(file()), HasSubstr("\"key\": true"));
  ASSERT_EQ(damagedCopies().size(), 1U);
  EXPECT_EQ(contentOf(damagedCopies().front()), half);
  ASSERT_EQ(log_.lines().size(), 1U);
  EXPECT_THAT(log_.lines().front(), HasSubstr("is damaged"));
}

TEST_F(DefaultsTest, ADamagedFileLeavesOneCopyHoweverOftenItIsRead) {
  folder_.write("Nimbrel/suite.json", "[1]");
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(open().keys().isEmpty());
  EXPECT_EQ(damagedCopies().size(), 1U);
}

TEST_F(DefaultsTest, AnEmptyFileHasNothingToKeep) {
  folder_.write("Nimbrel/suite.json", "");
  EXPECT_TRUE(open().keys().isEmpty());
  EXPECT_TRUE(damagedCopies().empty());
}

TEST_F(DefaultsTest, WhatCannotBeWrittenIsKeptForTheLifeOfTheProcess) {
  folder_.write("Nimbrel", "a file where the folder should be");
  Defaults defaults(folder_.path("Nimbrel"), "suite");
  EXPECT_FALSE(defaults.set(key, 7));
  EXPECT_EQ(defaults.value(key).toInt(), 7);
  ASSERT_FALSE(log_.lines().empty());
  EXPECT_THAT(log_.lines().back(), HasSubstr("cannot be written"));
  EXPECT_EQ(contentOf(folder_.path("Nimbrel")), "a file where the folder should be");
}

TEST_F(DefaultsTest, WhatCouldNotBeWrittenIsWrittenOnceThatIsPossible) {
  const auto inTheWay = folder_.write("Nimbrel", "a file where the folder should be");
  Defaults defaults(folder_.path("Nimbrel"), "suite");
  EXPECT_FALSE(defaults.set(key, 7));
  std::filesystem::remove(inTheWay);
  const auto complaints = log_.lines().size();
  EXPECT_TRUE(defaults.set(QStringLiteral("other"), 8));
  EXPECT_EQ(log_.lines().size(), complaints);
  EXPECT_THAT(contentOf(file()), HasSubstr("\"key\": 7"));
  EXPECT_THAT(contentOf(file()), HasSubstr("\"other\": 8"));
}

TEST_F(DefaultsTest, AFileThatCannotBeWrittenStaysAsItIsUntilItCan) {
  Defaults defaults(folder_.path("Nimbrel"), "suite");
  ASSERT_TRUE(defaults.set(key, 1));
  const auto before = contentOf(file());
  {
    const Testing::ReadOnlyFile readOnly(file());
    EXPECT_FALSE(defaults.set(key, 2));
    defaults.synchronize();
    EXPECT_EQ(defaults.value(key).toInt(), 2);
    EXPECT_EQ(contentOf(file()), before);
  }
  defaults.synchronize();
  EXPECT_THAT(contentOf(file()), HasSubstr("\"key\": 2"));
}

TEST(DataValue, OtherValuesHoldNoBytes) {
  EXPECT_FALSE(dataFrom(QStringLiteral("eA==")));
  EXPECT_FALSE(dataFrom(QJsonValue::Undefined));
  EXPECT_FALSE(dataFrom(QJsonObject{{QStringLiteral("$data"), 5}}));
  EXPECT_FALSE(dataFrom(QJsonObject{{QStringLiteral("$data"), QStringLiteral("?")}}));
}

}  // namespace
}  // namespace Nimbrel
