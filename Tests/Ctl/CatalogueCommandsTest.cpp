#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;
using Testing::ProgramOutput;
using Testing::runProgram;
using ::testing::StartsWith;
using Testing::StoreHome;
using Testing::writePicture;

QJsonDocument jsonOf(const ProgramOutput& output) {
  EXPECT_EQ(output.status, 0) << output.errors;
  return QJsonDocument::fromJson(QByteArray::fromStdString(output.output));
}

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

class CtlTest : public ::testing::Test {
 protected:
  [[nodiscard]] ProgramOutput ctl(const QStringList& arguments, const QByteArray& input = {}) const {
    return runProgram("nimbrelctl", arguments, home_.folder().path(), input);
  }
  [[nodiscard]] QJsonDocument json(QStringList arguments, const QByteArray& input = {}) const {
    arguments << text("--json");
    return jsonOf(ctl(arguments, input));
  }
  ShotID importPicture(const std::string& name, int seed) {
    writePicture(home_.path(name), 120, 80, seed);
    Testing::setModificationTime(home_.path(name), 1'700'000'000);
    const auto store = home_.open(ProcessRole::tool);
    store->importFiles({home_.path(name)});
    return Testing::shotNamed(*store, name)->id;
  }

  StoreHome home_;
};

TEST_F(CtlTest, HelpAndVersionWorkEverywhere) {
  EXPECT_THAT(ctl({text("--help")}).output, StartsWith("usage: nimbrelctl COMMAND"));
  EXPECT_THAT(ctl({text("show"), text("--help")}).output, StartsWith("usage: nimbrelctl show"));
  EXPECT_THAT(ctl({text("--version")}).output, StartsWith("nimbrelctl "));
  EXPECT_EQ(ctl({text("scan"), text("--version")}).status, 0);
}

TEST_F(CtlTest, JsonMayStandBeforeTheCommand) {
  EXPECT_EQ(ctl({text("--json"), text("list")}).output, "[]\n");
  EXPECT_EQ(ctl({text("--json"), text("--help")}).status, 0);
  EXPECT_EQ(ctl({text("--json")}).status, 2);
}

TEST_F(CtlTest, WrongUsageIsToldWithTheUsage) {
  const std::vector<QStringList> wrong{{},
                                       {text("nonsense")},
                                       {text("list"), text("--nonsense")},
                                       {text("show")},
                                       {text("show"), text("abc")},
                                       {text("list"), text("extra")},
                                       {text("duplicates"), text("--tolerance"), text("many")}};
  for (const auto& arguments : wrong) {
    const auto output = ctl(arguments);
    EXPECT_EQ(output.status, 2) << arguments.join(QLatin1Char(' ')).toStdString();
    EXPECT_THAT(output.errors, HasSubstr("usage: nimbrelctl"));
    EXPECT_EQ(output.output, "");
  }
}

TEST_F(CtlTest, ScanPrintsItsStatus) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  EXPECT_EQ(json({text("scan")}).object(), (QJsonObject{{text("status"), text("Added 1 shot")}}));
  EXPECT_EQ(ctl({text("scan")}).output, "");
}

TEST_F(CtlTest, ImportTakesPathsRelativeToTheFolderItRunsIn) {
  writePicture(home_.path("pictures/a.png"));
  EXPECT_EQ(json({text("import"), text("./pictures/../pictures/a.png")}).object().value(text("status")),
            QJsonValue(text("Imported 1")));
  const auto shot = json({text("list")}).array().first().toObject();
  EXPECT_EQ(shot.value(text("path")).toString().toStdString(), home_.path("pictures/a.png"));
}

TEST_F(CtlTest, AFileThatCannotBeReadFailsTheImport) {
  const auto output = ctl({text("import"), text("missing.png")});
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: cannot read missing.png: not a file\n");
  EXPECT_TRUE(json({text("list")}).array().isEmpty());
}

TEST_F(CtlTest, ImportFollowsAPathThatLeadsBackOutOfALink) {
  writePicture(home_.path("a/pic.png"));
  home_.folder().makeFolder("a/b");
  home_.folder().makeFolder("c");
  std::filesystem::create_directory_symlink(home_.path("a/b"), home_.path("c/link"));
  EXPECT_EQ(ctl({text("import"), text("c/link/../pic.png")}).output, "Imported 1\n");
}

TEST_F(CtlTest, ANameWithALineFeedTakesOneLine) {
  home_.addFile(home_.desktop("Screenshot a\nb\x1B[2J.png"));
  EXPECT_EQ(ctl({text("scan")}).output, "Added 1 shot\n");
  const auto table = ctl({text("list")}).output;
  EXPECT_EQ(std::ranges::count(table, '\n'), 1) << table;
  EXPECT_EQ(table.find('\x1B'), std::string::npos);
  EXPECT_EQ(std::ranges::count(ctl({text("import"), text("a\nb.png")}).errors, '\n'), 1);
}

TEST_F(CtlTest, ShowGivesTheWholeRecord) {
  const auto id = importPicture("a.png", 1);
  home_.open(ProcessRole::tool)->database().setOCR(id, "Title line\nmore", {});
  const auto list = json({text("show"), QString::number(id)}).array();
  ASSERT_EQ(list.size(), 1);
  const auto shot = list.first().toObject();
  const std::vector<const char*> members{"added",       "appAttributionTrusted",
                                         "appName",     "barcodes",
                                         "bundleID",    "bytes",
                                         "captureType", "date",
                                         "derived",     "favorite",
                                         "filed",       "height",
                                         "id",          "name",
                                         "note",        "ocr",
                                         "ocrDone",     "path",
                                         "phash",       "sensitive",
                                         "shownName",   "tags",
                                         "width"};
  QStringList names;
  for (const auto* member : members) names << text(member);
  EXPECT_EQ(shot.keys(), names);
  EXPECT_EQ(shot.value(text("id")).toInteger(), id);
  EXPECT_EQ(shot.value(text("width")).toInt(), 120);
  EXPECT_EQ(shot.value(text("ocrDone")), QJsonValue(true));
  EXPECT_EQ(shot.value(text("phash")), QJsonValue(text("0")));
  EXPECT_TRUE(shot.value(text("tags")).isArray());
}

TEST_F(CtlTest, ShowTellsWhatDerivesFromTheRecord) {
  const auto id = importPicture("a.png", 1);
  const auto other = importPicture("b.png", 2);
  const auto store = home_.open(ProcessRole::tool);
  for (const auto shot : {id, other}) store->database().setShownName(shot, "Safari");
  store->database().setOCR(id, "An error\nLonger title line", {});
  const auto shot = json({text("show"), QString::number(id)}).array().first().toObject();
  EXPECT_EQ(shot.value(text("derived")).toObject(),
            (QJsonObject{{text("titleGuess"), text("Longer title line")},
                         {text("ocrHeadline"), text("An error")},
                         {text("pixels"), text("120 × 80")},
                         {text("captureTypeLabel"), text("Image")},
                         {text("symbol"), text("photo")},
                         {text("group"), QJsonObject{{text("key"), text("app:safari")},
                                                     {text("title"), text("Safari")},
                                                     {text("kind"), text("app")},
                                                     {text("bundleID"), text("com.apple.Safari")}}},
                         {text("smart"), QJsonArray{text("errors")}},
                         {text("receipt"), false},
                         {text("protected"), false},
                         {text("libraryName"), text("Safari — Longer title line — 2023-11-14.png")},
                         {text("stack"), text("stack:app:safari")},
                         {text("snippet"), QJsonValue::Null},
                         {text("day"), text("Nov 14, 2023")}}));
}

TEST_F(CtlTest, AProtectedShotGivesNothingAway) {
  const auto id = importPicture("secret name.png", 1);
  home_.open(ProcessRole::tool)->database().setOCR(id, "password: abcdef", {"Password"});
  const auto shot = json({text("list")}).array().first().toObject();
  EXPECT_EQ(shot.keys(), (QStringList{text("bytes"), text("date"), text("derived"), text("favorite"), text("filed"),
                                      text("id"), text("name")}));
  EXPECT_EQ(shot.value(text("name")), QJsonValue(text("Sensitive screenshot")));
  EXPECT_EQ(shot.value(text("derived")).toObject(), (QJsonObject{{text("protected"), true}}));
  for (const auto& arguments : {QStringList{text("list")}, QStringList{text("show"), QString::number(id)}}) {
    const auto output = ctl(arguments).output;
    EXPECT_THAT(output, HasSubstr("Sensitive screenshot"));
    EXPECT_EQ(output.find("secret"), std::string::npos);
    EXPECT_EQ(output.find("abcdef"), std::string::npos);
  }
}

TEST_F(CtlTest, AProtectedShotIsMissingFromWhatTellsItsSource) {
  const auto id = importPicture("secret name.png", 1);
  const auto store = home_.open(ProcessRole::tool);
  store->database().setShownName(id, "Safari");
  store->database().setOCR(id, "password: abcdef", {"Password"});
  const auto overview = json({text("overview")}).object();
  EXPECT_TRUE(overview.value(text("contentGroups")).toArray().isEmpty());
  EXPECT_TRUE(overview.value(text("shotStacks")).toArray().isEmpty());
  EXPECT_EQ(overview.value(text("sensitiveCount")), QJsonValue(1));
  EXPECT_TRUE(json({text("list"), text("--filter"), text("content:app:safari")}).array().isEmpty());
  EXPECT_THAT(ctl({text("list"), text("--sections")}).output, HasSubstr("Sensitive screenshot"));
}

TEST_F(CtlTest, WhatFailsOnAProtectedShotDoesNotNameIt) {
  const auto id = importPicture("secret name.png", 1);
  home_.open(ProcessRole::tool)->database().setOCR(id, "password: abcdef", {"Password"});
  std::filesystem::remove(home_.path("secret name.png"));
  for (const auto& arguments :
       {QStringList{text("file"), QString::number(id)}, QStringList{text("trash"), QString::number(id)},
        QStringList{text("rename"), QString::number(id), text("other")}}) {
    const auto output = ctl(arguments);
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.errors.find("secret"), std::string::npos) << output.errors;
  }
}

TEST_F(CtlTest, AnUnknownIdFailsWithTheReason) {
  const auto output = ctl({text("show"), text("12"), text("--json")});
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: no shot has the id 12\n");
  EXPECT_EQ(output.output, "");
}

TEST_F(CtlTest, OverviewTellsWhatTheSidebarShows) {
  const auto id = importPicture("a.png", 1);
  const auto other = importPicture("b.png", 2);
  const auto store = home_.open(ProcessRole::tool);
  store->database().setTags(id, {"b", "a", "project:p"});
  for (const auto shot : {id, other}) store->database().setShownName(shot, "Safari");
  store->database().setOCR(id, "error: it failed", {});
  store->settings().projects.set({"p"});
  store->settings().savedSearches.set({"s"});
  const QJsonObject safari{{text("key"), text("app:safari")},
                           {text("title"), text("Safari")},
                           {text("kind"), text("app")},
                           {text("bundleID"), text("com.apple.Safari")},
                           {text("count"), 2}};
  const QJsonObject stack{{text("id"), text("stack:app:safari")},
                          {text("title"), text("Safari")},
                          {text("symbol"), text("square.stack.3d.up")},
                          {text("bundleID"), text("com.apple.Safari")},
                          {text("shotIDs"), QJsonArray{qint64{id}, qint64{other}}},
                          {text("newest"), 1'700'000'000}};
  EXPECT_EQ(json({text("overview")}).object(), (QJsonObject{{text("shots"), 2},
                                                            {text("inboxCount"), 2},
                                                            {text("sensitiveCount"), 0},
                                                            {text("tags"), QJsonArray{text("a"), text("b")}},
                                                            {text("contentGroups"), QJsonArray{safari}},
                                                            {text("smartCounts"), QJsonObject{{text("errors"), 1}}},
                                                            {text("shotStacks"), QJsonArray{stack}},
                                                            {text("projects"), QJsonArray{text("p")}},
                                                            {text("savedSearches"), QJsonArray{text("s")}}}));
  EXPECT_THAT(ctl({text("overview")}).output, HasSubstr("Safari: 2\n"));
}

TEST_F(CtlTest, DuplicatesAreListsOfIds) {
  const auto a = importPicture("a.png", 1);
  const auto b = importPicture("b.png", 1);
  const auto c = importPicture("c.png", 2);
  const auto store = home_.open(ProcessRole::tool);
  store->database().setHash(a, 0xFF00);
  store->database().setHash(b, 0xFF01);
  store->database().setHash(c, 0xFFFF);
  const auto sizes = [](const QJsonDocument& groups) {
    std::vector<qsizetype> result;
    for (const auto& group : groups.array()) result.push_back(group.toArray().size());
    return result;
  };
  EXPECT_EQ(sizes(json({text("duplicates")})), (std::vector<qsizetype>{2}));
  EXPECT_EQ(sizes(json({text("duplicates"), text("--tolerance"), text("8")})), (std::vector<qsizetype>{3}));
  EXPECT_EQ(sizes(json({text("duplicates"), text("--tolerance=0")})), (std::vector<qsizetype>{}));
}

TEST_F(CtlTest, ACatalogueThatCannotBeOpenedFailsWithOneLine) {
  home_.folder().write(".local/share/Nimbrel", "a file where the folder should be");
  const auto output = ctl({text("list")});
  EXPECT_EQ(output.status, 1);
  EXPECT_THAT(output.errors, StartsWith("nimbrelctl: Cannot create "));
  EXPECT_EQ(std::ranges::count(output.errors, '\n'), 1);
}

}  // namespace
}  // namespace Nimbrel
