#include "Samples/SampleHome.h"
#include "Support/Pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>

namespace Nimbrel::Testing {

namespace {

namespace fs = std::filesystem;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr qint64 secondsPerDay = 24 * 3600;
constexpr const char* suite = ".config/Nimbrel/com.halderquist.nimbrel.json";

std::optional<std::string> attribute(const fs::path& file, const char* name) {
  std::array<char, 64> value{};
  const auto size = ::getxattr(file.c_str(), name, value.data(), value.size());
  if (size < 0) return std::nullopt;
  return std::string(value.data(), static_cast<std::size_t>(size));
}

bool keepsAttributes(const TemporaryFolder& folder) {
  const auto probe = folder.write("probe", "");
  return ::setxattr(probe.c_str(), "user.probe", "1", 1, 0) == 0;
}

/// Below the home, so that two homes can be compared.
std::map<std::string, std::string> contents(const SampleHome& home) {
  std::map<std::string, std::string> all;
  for (const auto& file : home.pictures())
    all[file.lexically_relative(home.path()).string()] = contentOf(file.string());
  return all;
}

std::ptrdiff_t linesIn(const std::string& text) { return std::ranges::count(text, '\n'); }

QStringList words(std::initializer_list<const char*> list) {
  QStringList all;
  for (const auto* word : list) all.append(QString::fromUtf8(word));
  return all;
}

TEST(SampleProgram, SaysHowManyPicturesItMadeWhere) {
  const SampleHome home;
  const auto run = runSample({QString::fromStdString(home.path())});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, "26 pictures in " + home.path() + "\n");
  EXPECT_THAT(run.errors, IsEmpty());
  EXPECT_EQ(home.pictures().size(), 26U);
}

TEST(SampleProgram, NamesWaitingPicturesByTheirDates) {
  const SampleHome home;
  home.make();
  const auto files = home.waiting();
  EXPECT_EQ(files.size(), 17U);
  for (const auto& file : files) {
    const auto date = modified(file);
    EXPECT_EQ(file.filename().string(),
              date.toString(QStringLiteral("'Screenshot 'yyyy-MM-dd' at 'HH.mm.ss'.png'")).toStdString());
  }
}

TEST(SampleProgram, SpreadsDatesOverTheLastSixWeeks) {
  const SampleHome home;
  home.make();
  const auto now = QDateTime::fromSecsSinceEpoch(sampleNow, Qt::UTC);
  std::map<qint64, int> waitingByAge;
  for (const auto& file : home.waiting()) ++waitingByAge[modified(file).date().daysTo(now.date())];
  EXPECT_EQ(waitingByAge[0], 2);
  EXPECT_EQ(waitingByAge[1], 2);
  for (const auto& file : home.pictures()) {
    EXPECT_LE(modified(file), now) << file;
    EXPECT_GE(modified(file), now.addDays(-42)) << file;
  }
}

TEST(SampleProgram, FilesTheRestByYearAndMonthUnderTitles) {
  const SampleHome home;
  home.make();
  const auto files = home.filed();
  EXPECT_EQ(files.size(), 9U);
  for (const auto& file : files) {
    const auto date = modified(file);
    EXPECT_EQ(file.parent_path().string(),
              home.path(date.toString(QStringLiteral("'Pictures/Nimbrel/'yyyy/yyyy-MM")).toStdString()));
    EXPECT_THAT(file.filename().string(),
                EndsWith(date.toString(QStringLiteral("' \u2014 'yyyy-MM-dd'.png'")).toStdString()));
    EXPECT_GT(file.stem().string().size(), 20U) << file;
  }
}

TEST(SampleProgram, LeavesTheKindOfCaptureWithWhatWaits) {
  const SampleHome home;
  home.make();
  // Where attributes cannot be kept, a home without them is what is asked for.
  const auto yes = keepsAttributes(home.folder()) ? std::optional<std::string>("1") : std::nullopt;
  std::set<std::string> kinds;
  for (const auto& file : home.waiting()) {
    EXPECT_EQ(attribute(file, "user.kMDItemIsScreenCapture"), yes) << file;
    if (const auto kind = attribute(file, "user.kMDItemScreenCaptureType")) kinds.insert(*kind);
  }
  for (const auto& file : home.filed()) EXPECT_EQ(attribute(file, "user.kMDItemIsScreenCapture"), std::nullopt) << file;
  EXPECT_EQ(kinds, yes ? std::set<std::string>({"display", "selection", "window"}) : std::set<std::string>());
}

TEST(SampleProgram, SetsNimbrelUpForTheHome) {
  const SampleHome home;
  home.make();
  const auto content = QByteArray::fromStdString(contentOf(home.path(suite)));
  const QJsonObject expected{{QStringLiteral("libraryRoot"), QString::fromStdString(home.path("Pictures/Nimbrel"))},
                             {QStringLiteral("sources"), QJsonArray{QString::fromStdString(home.path("Desktop"))}}};
  EXPECT_EQ(QJsonDocument::fromJson(content).object(), expected) << content.toStdString();
  EXPECT_EQ(fs::status(home.path(".config/Nimbrel")).permissions(), fs::perms::owner_all);
}

TEST(SampleProgram, WritesAbsolutePathsForARelativeFolder) {
  const SampleHome home;
  const auto run = runSample(words({"--now", "1769855742", "./deep//home/"}), home.folder().path());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_THAT(contentOf(home.folder().path("deep/home/" + std::string(suite))),
              HasSubstr("\"" + home.folder().path("deep/home/Desktop") + "\""));
}

TEST(SampleProgram, MakesTheSameBytesEachTime) {
  const SampleHome one;
  const SampleHome other;
  one.make();
  other.make();
  EXPECT_TRUE(contents(one) == contents(other));
}

TEST(SampleProgram, ReplacesAFormerRun) {
  const SampleHome home;
  home.make();
  const auto former = home.waiting();
  fs::rename(former.front(), home.path("Pictures/Nimbrel/Renamed by hand.png"));
  home.folder().write("home/" + std::string(suite), R"({"sources": [], "protectSensitive": true})");
  home.make(sampleNow + 3 * secondsPerDay);
  EXPECT_EQ(home.waiting().size(), 17U);
  EXPECT_EQ(home.filed().size(), 9U);
  EXPECT_FALSE(fs::exists(former.back()));
  EXPECT_FALSE(fs::exists(home.path("Pictures/Nimbrel/Renamed by hand.png")));
  EXPECT_THAT(contentOf(home.path(suite)), ::testing::Not(HasSubstr("protectSensitive")));
}

TEST(SampleProgram, LeavesFilesOfOthersAlone) {
  const SampleHome home;
  const auto note = home.folder().write("home/Desktop/note.txt", "mine");
  const auto own = home.path("Desktop/own.png");
  const auto ownFiled = home.path("Pictures/Nimbrel/2026/2026-01/own.png");
  writePicture(own);
  writePicture(ownFiled, 80, 60, 7);
  const auto before = std::array{contentOf(note), contentOf(own), contentOf(ownFiled)};
  home.make();
  home.make(sampleNow + secondsPerDay);
  EXPECT_EQ(before, (std::array{contentOf(note), contentOf(own), contentOf(ownFiled)}));
  EXPECT_EQ(home.pictures().size(), 26U + before.size());
}

TEST(SampleProgram, DoesNotOverwriteAFileThatStandsInTheWay) {
  const SampleHome home;
  const auto name = "home/Desktop/Screenshot 2026-01-29 at 10.15.42.png";
  const auto file = home.folder().write(name, "a file of someone else's");
  const auto run = runSample(words({"--now", "1769855742"}) << QString::fromStdString(home.path()));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(linesIn(run.errors), 1) << run.errors;
  EXPECT_EQ(contentOf(file), "a file of someone else's");
}

TEST(SampleProgram, RefusesAHomeThatNimbrelIsInUseIn) {
  const SampleHome home;
  home.folder().write("home/" + std::string(suite), R"({"autoFile": true})");
  const auto run = runSample({QString::fromStdString(home.path())});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(linesIn(run.errors), 1) << run.errors;
  EXPECT_EQ(contentOf(home.path(suite)), R"({"autoFile": true})");
  EXPECT_FALSE(fs::exists(home.path("Desktop")));
}

TEST(SampleProgram, DatesTwoPicturesTodayWhenTheDayHasJustBegun) {
  const SampleHome home;
  const qint64 midnight = sampleNow - sampleNow % secondsPerDay;
  home.make(midnight);
  const auto today = QDateTime::fromSecsSinceEpoch(midnight, Qt::UTC).date();
  const auto files = home.waiting();
  EXPECT_EQ(files.size(), 17U);
  EXPECT_EQ(std::ranges::count_if(files, [today](const fs::path& file) { return modified(file).date() == today; }), 2);
}

TEST(SampleProgram, FailsWhereNothingCanBeWritten) {
  const SampleHome home;
  const auto file = home.folder().write("file", "");
  const auto belowAFile = runSample({QString::fromStdString(file + "/home")});
  EXPECT_EQ(belowAFile.status, 1);
  EXPECT_THAT(belowAFile.errors, StartsWith("nimbrel-sample: "));
  EXPECT_EQ(linesIn(belowAFile.errors), 1) << belowAFile.errors;
  EXPECT_THAT(belowAFile.output, IsEmpty());

  home.folder().write("home/Desktop", "");
  const auto ontoAFile = runSample({QString::fromStdString(home.path())});
  EXPECT_EQ(ontoAFile.status, 1);
  EXPECT_EQ(linesIn(ontoAFile.errors), 1) << ontoAFile.errors;
}

TEST(SampleProgram, ExplainsItself) {
  const auto run = runSample(words({"--help"}));
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.output, StartsWith("Usage: nimbrel-sample [--now SECONDS] FOLDER\n"));
  EXPECT_THAT(run.errors, IsEmpty());
}

TEST(SampleProgram, RejectsWrongUsage) {
  const SampleHome home;
  const auto folder = QString::fromStdString(home.path());
  const std::array wrong{QStringList(),
                         words({""}),
                         words({"--now", "1769855742"}),
                         words({"--unknown"}) << folder,
                         words({"--now", "yesterday"}) << folder,
                         words({"--now", "12 "}) << folder,
                         words({"--now", "-5"}) << folder,
                         words({"--now", "99999999999999999999"}) << folder,
                         QStringList(folder) << QStringLiteral("--now"),
                         QStringList(folder) << folder};
  for (const auto& arguments : wrong) {
    const auto run = runSample(arguments);
    EXPECT_EQ(run.status, 2) << arguments.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(linesIn(run.errors), 1) << run.errors;
    EXPECT_THAT(run.output, IsEmpty());
  }
  EXPECT_FALSE(fs::exists(home.path()));
}

}  // namespace

}  // namespace Nimbrel::Testing
