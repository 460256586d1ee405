#include "Views/Recording/StripColumns.h"

#include <gmock/gmock.h>

#include <vector>

namespace Nimbrel {
namespace {

using Part = StripColumn::Part;
using RecordingProcessor::SoundOverview;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

SoundOverview soundOf(std::vector<MediaFile::TimeRange> audible, std::vector<int> peaks = {}) {
  return {.duration = 10, .hasSound = true, .audible = std::move(audible), .peaks = std::move(peaks)};
}

std::vector<Part> partsOf(const std::vector<StripColumn>& columns) {
  std::vector<Part> parts;
  for (const auto& column : columns) parts.push_back(column.part);
  return parts;
}

TEST(StripColumnsTest, TellWhatIsTrimmedWhatIsSilentAndWhatIsAudible) {
  const auto columns = stripColumns(soundOf({{1, 3}, {5, 6}}), {2, 8}, 10);
  EXPECT_THAT(partsOf(columns), ElementsAre(Part::Outside, Part::Outside, Part::Audible, Part::Silent, Part::Silent,
                                            Part::Audible, Part::Silent, Part::Silent, Part::Outside, Part::Outside));
}

TEST(StripColumnsTest, ABarBelongsToWhereItsMiddleIs) {
  EXPECT_THAT(partsOf(stripColumns(soundOf({{1.4, 2.6}}), {0, 10}, 5)),
              ElementsAre(Part::Silent, Part::Silent, Part::Silent, Part::Silent, Part::Silent));
  EXPECT_THAT(partsOf(stripColumns(soundOf({{0.9, 3.1}}), {0, 10}, 5)),
              ElementsAre(Part::Audible, Part::Audible, Part::Silent, Part::Silent, Part::Silent));
}

TEST(StripColumnsTest, WhereNothingIsAudibleNothingIsDropped) {
  EXPECT_THAT(stripColumns(soundOf({}), {0, 10}, 8), Each(Field(&StripColumn::part, Part::Audible)));
  EXPECT_THAT(partsOf(stripColumns(soundOf({{0, 2}}), {5, 10}, 4)),
              ElementsAre(Part::Outside, Part::Outside, Part::Audible, Part::Audible));
}

TEST(StripColumnsTest, EachIsAsLoudAsTheLoudestInIt) {
  const auto fewer = stripColumns(soundOf({}, {0, 32768, 0, 3277}), {0, 10}, 2);
  EXPECT_DOUBLE_EQ(fewer[0].loudness, 1);
  EXPECT_NEAR(fewer[1].loudness, 2.0 / 3, 0.001);
  const auto more = stripColumns(soundOf({}, {32768, 0}), {0, 10}, 4);
  EXPECT_DOUBLE_EQ(more[0].loudness, 1);
  EXPECT_DOUBLE_EQ(more[1].loudness, 1);
  EXPECT_DOUBLE_EQ(more[2].loudness, 0);
}

TEST(StripColumnsTest, WithoutPeaksAllIsQuiet) {
  EXPECT_THAT(stripColumns(soundOf({{0, 10}}), {0, 10}, 3), Each(StripColumn{Part::Audible, 0}));
  EXPECT_THAT(stripColumns(soundOf({{0, 10}}), {0, 10}, 0), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
