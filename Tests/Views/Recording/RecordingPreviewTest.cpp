#include "Support/GifReading.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"
#include "Views/Recording/RecordingFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

namespace Nimbrel {
namespace {

using Part = StripColumn::Part;
using ::testing::Contains;
using ::testing::Each;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using namespace Testing;

/// What the preview and the strip show is what an export makes.
class RecordingPreviewTest : public RecordingFixture {
 protected:
  [[nodiscard]] int shownNumber() const { return numberIn(preview()->frame()); }
  /// What nimbrelctl says of the recording.
  [[nodiscard]] std::vector<MediaFile::TimeRange> audible() const {
    const auto told = runProgram("nimbrelctl",
                                 {QStringLiteral("recording"), QStringLiteral("audible"), QString::fromStdString(path_),
                                  QStringLiteral("--json")},
                                 home_.folder().path());
    EXPECT_EQ(told.status, 0) << told.errors;
    std::vector<MediaFile::TimeRange> ranges;
    for (const auto range : QJsonDocument::fromJson(QByteArray::fromStdString(told.output)).array()) {
      ranges.push_back({.start = range.toArray()[0].toDouble(), .end = range.toArray()[1].toDouble()});
    }
    return ranges;
  }
};

TEST_F(RecordingPreviewTest, BeginsWithTheFirstPicture) {
  writeRecording(3);
  openAndWait();
  EXPECT_EQ(shownNumber(), 0);
  EXPECT_EQ(preview()->frame().size(), QSize(160, 120)) << "never larger than it is";
}

TEST_F(RecordingPreviewTest, ShowsThePictureAtTheEndThatMoves) {
  writeRecording(3);
  openAndWait();
  move(start(), 1);
  ASSERT_TRUE(comesToShow(1));
  EXPECT_EQ(shownNumber(), 30);
  move(end(), 2);
  ASSERT_TRUE(comesToShow(1.999));
  EXPECT_EQ(shownNumber(), 59) << "the last that is kept";
  move(start(), 0.5);
  ASSERT_TRUE(comesToShow(0.5));
  EXPECT_EQ(shownNumber(), 15);
}

TEST_F(RecordingPreviewTest, TheTrimmedCopyBeginsAndEndsWithThePicturesShown) {
  writeRecording(4, {1});
  for (const auto& [from, to] : {std::pair(0.7, 2.3), std::pair(1.05, 3.21), std::pair(0.0, 1.0 / 3)}) {
    openAndWait();
    move(start(), from);
    ASSERT_TRUE(comesToShow(start()->seconds()));
    const int first = shownNumber();
    move(end(), to);
    ASSERT_TRUE(comesToShow(end()->seconds() - 0.001));
    const int last = shownNumber();
    exportBy(save());
    const auto copy = readMovie(*store_->lastRecordingURL());
    ASSERT_FALSE(copy.pictures.empty());
    EXPECT_EQ(copy.numbers().front(), first) << from;
    EXPECT_EQ(copy.numbers().back(), last) << to;
  }
}

TEST_F(RecordingPreviewTest, TheGifBeginsWithThePictureShown) {
  writeRecording(3);
  openAndWait();
  move(start(), 1.25);
  ASSERT_TRUE(comesToShow(1.25));
  const auto shown = preview()->frame();
  exportBy(exportGif());
  const auto gif = readGif(home_.desktop("Screen recording.gif"));
  ASSERT_THAT(gif.images, SizeIs(14)) << "1.75 seconds at eight a second";
  EXPECT_EQ(numberIn(gif.images.front().shown), numberIn(shown));
  EXPECT_EQ(gif.size, shown.size());
}

TEST_F(RecordingPreviewTest, ALargePictureIsFitted) {
  writeMovie(path_, {.size = {1600, 1200}, .times = {0, 1}, .end = 2});
  openAndWait();
  EXPECT_EQ(preview()->frame().height(), 200);
  EXPECT_EQ(shownNumber(), 0);
  move(start(), 1);
  ASSERT_TRUE(comesToShow(1));
  EXPECT_EQ(shownNumber(), 1);
}

TEST_F(RecordingPreviewTest, ARecordingThatVanishesStaysOpenAsFarAsItWas) {
  writeRecording(3);
  openAndWait();
  std::filesystem::remove(path_);
  move(start(), 2);
  ASSERT_TRUE(comesToShow(2));
  EXPECT_EQ(shownNumber(), 60);
}

TEST_F(RecordingPreviewTest, TheStripIsWhatIsAudible) {
  writeRecording(8, {1, 1.2, 4, 7.4});
  openAndWait();
  const auto ranges = audible();
  ASSERT_THAT(ranges, SizeIs(3));
  const auto& sound = strip()->sound();
  ASSERT_TRUE(sound);
  EXPECT_EQ(sound->audible, ranges);
  const auto columns = strip()->columns();
  ASSERT_THAT(columns, Not(IsEmpty()));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto middle = (static_cast<double>(i) + 0.5) / static_cast<double>(columns.size()) * sound->duration;
    const bool isAudible =
        std::ranges::any_of(ranges, [&](const auto& range) { return range.start <= middle && middle < range.end; });
    EXPECT_EQ(columns[i].part, isAudible ? Part::Audible : Part::Silent) << middle;
  }
}

TEST_F(RecordingPreviewTest, TheCopyWithoutSilenceIsAsLongAsTheStripSays) {
  writeRecording(8, {1, 4, 7.4});
  openAndWait();
  removeSilence()->click();
  move(start(), 2);
  double silent = 0;
  const auto columns = strip()->columns();
  for (const auto& column : columns) silent += column.part == Part::Silent ? 1 : 0;
  const auto wanted = 6 - silent / static_cast<double>(columns.size()) * 8;
  exportBy(save());
  const auto copy = readMovie(home_.desktop("Screen recording.trimmed.mov"));
  EXPECT_NEAR(copy.duration, wanted, 3 * 8.0 / static_cast<double>(columns.size()));
  EXPECT_THAT(copy.clicks(), SizeIs(2));
}

TEST_F(RecordingPreviewTest, WhatIsTrimmedOffIsOutside) {
  writeRecording(4, {1, 3});
  openAndWait();
  move(start(), 2);
  const auto columns = strip()->columns();
  for (std::size_t i = 0; i < columns.size() / 2 - 1; ++i) EXPECT_EQ(columns[i].part, Part::Outside) << i;
  EXPECT_THAT(columns, Contains(Field(&StripColumn::part, Part::Silent)));
  EXPECT_THAT(columns, Contains(Field(&StripColumn::part, Part::Audible)));
}

TEST_F(RecordingPreviewTest, WithoutATrackOfSoundTheStripSaysSo) {
  writeRecording(2);
  openAndWait();
  EXPECT_EQ(strip()->words(), QStringLiteral("No sound"));
  EXPECT_THAT(strip()->columns(), IsEmpty());
  removeSilence()->click();
  exportBy(save());
  EXPECT_NEAR(readMovie(home_.desktop("Screen recording.trimmed.mov")).duration, 2, 0.002) << "all is kept";
}

TEST_F(RecordingPreviewTest, SilenceThroughoutDropsNothing) {
  writeMovie(path_, {.times = steadyTimes(2), .end = 2, .sound = MadeMovie::Sound{.end = 2}});
  openAndWait();
  EXPECT_THAT(audible(), IsEmpty());
  EXPECT_THAT(strip()->columns(), Each(Field(&StripColumn::part, Part::Audible)));
  EXPECT_EQ(strip()->accessibleDescription(), QStringLiteral("No silent sections"));
}

}  // namespace
}  // namespace Nimbrel
