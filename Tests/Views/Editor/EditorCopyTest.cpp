#include "Views/Editor/EditorCopy.h"

#include "Editing/Flatten.h"
#include "Foundation/FilePath.h"
#include "Platform/ImageFile.h"
#include "Support/Pictures.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "Views/Editor/EditorPicture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace Nimbrel {
namespace {

using EditorCopy::Outcome;
using ::testing::UnorderedElementsAre;
using Kind = Annotation::Kind;
namespace fs = std::filesystem;

Annotation markOf(Kind kind, QPointF start = {0.25, 0.25}, QPointF end = {0.75, 0.75}) {
  Annotation mark;
  mark.kind = kind;
  mark.start = start;
  mark.end = end;
  return mark;
}

class EditorCopyTest : public ::testing::Test {
 protected:
  EditorCopyTest() { Testing::writePicture(source_, 120, 80, 3); }

  [[nodiscard]] EditorCopy::Saved save(const std::vector<Annotation>& items) const {
    return EditorCopy::save(source_, shown_ ? *shown_ : stateOfFile(source_), items, givesUp_);
  }
  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) names.push_back(entry.path().filename());
    return names;
  }

  Testing::TemporaryFolder folder_;
  std::string source_ = folder_.path("Shot.png");
  std::optional<FileState> shown_;
  std::atomic<bool> givesUp_ = false;
};

TEST_F(EditorCopyTest, WhatOnlyHidesIsCalledRedacted) {
  const std::vector hiding{markOf(Kind::redact), markOf(Kind::blur)};
  EXPECT_EQ(EditorCopy::wantedPath("/a/Shot.jpeg", hiding), "/a/Shot redacted.png");
}

TEST_F(EditorCopyTest, EveryOtherMarkMakesItEdited) {
  for (const auto kind : {Kind::box, Kind::arrow, Kind::highlight, Kind::step, Kind::label, Kind::crop}) {
    const std::vector items{markOf(Kind::redact), markOf(kind)};
    EXPECT_EQ(EditorCopy::wantedPath("/a/Shot.png", items), "/a/Shot edited.png");
  }
}

TEST_F(EditorCopyTest, ALongNameLosesItsEnd) {
  const auto path = EditorCopy::wantedPath("/a/" + std::string(251, 'x') + ".png", std::vector{markOf(Kind::redact)});
  EXPECT_EQ(FilePath::lastComponent(path), std::string(242, 'x') + " redacted.png");
}

TEST_F(EditorCopyTest, HoldsThePixelsThatTheMarksMake) {
  const std::vector items{markOf(Kind::redact), markOf(Kind::box, {0.1, 0.1}, {0.2, 0.9})};
  const auto before = ImageFile::picture(source_);
  const auto saved = save(items);
  ASSERT_EQ(saved.outcome, Outcome::Written);
  EXPECT_EQ(saved.path, folder_.path("Shot edited.png"));
  EXPECT_EQ(ImageFile::picture(saved.path), Flatten::render(source_, items));
  EXPECT_EQ(ImageFile::picture(source_), before);
}

TEST_F(EditorCopyTest, CoveredPixelsAreInNoPartOfTheFile) {
  const auto saved = save({markOf(Kind::redact)});
  ASSERT_EQ(saved.outcome, Outcome::Written);
  const auto copy = ImageFile::picture(saved.path);
  for (int y = 20; y < 60; ++y) {
    for (int x = 30; x < 90; ++x) ASSERT_EQ(copy.pixel(x, y), qRgb(0, 0, 0)) << x << ", " << y;
  }
  EXPECT_THAT(Testing::chunksOfPng(saved.path), ::testing::Not(::testing::Contains("tEXt")));
}

TEST_F(EditorCopyTest, TakesTheNextFreeName) {
  EXPECT_EQ(save({markOf(Kind::redact)}).path, folder_.path("Shot redacted.png"));
  EXPECT_EQ(save({markOf(Kind::redact)}).path, folder_.path("Shot redacted 2.png"));
}

TEST_F(EditorCopyTest, AFileThatWasReplacedIsNotCovered) {
  shown_ = stateOfFile(source_);
  fs::remove(source_);
  Testing::writePicture(source_, 90, 60, 4);
  EXPECT_EQ(save({markOf(Kind::redact)}).outcome, Outcome::NotRendered);
  EXPECT_THAT(names(), UnorderedElementsAre("Shot.png"));
}

TEST_F(EditorCopyTest, AFileThatIsGoneOrNoPictureIsNotRendered) {
  std::ofstream(source_) << "no picture";
  EXPECT_EQ(save({markOf(Kind::redact)}).outcome, Outcome::NotRendered);
  fs::remove(source_);
  EXPECT_EQ(save({markOf(Kind::redact)}).outcome, Outcome::NotRendered);
}

TEST_F(EditorCopyTest, WhatWasGivenUpIsNotWritten) {
  givesUp_ = true;
  EXPECT_EQ(save({markOf(Kind::redact)}).outcome, Outcome::GivenUp);
  EXPECT_THAT(names(), UnorderedElementsAre("Shot.png"));
}

TEST_F(EditorCopyTest, AFolderThatCannotBeWrittenStaysAsItIs) {
  const std::vector items{markOf(Kind::redact)};
  const int status =
      Testing::onReadOnlyDisk(folder_.path(), [&] { return save(items).outcome == Outcome::NotWritten ? 0 : 1; });
  EXPECT_EQ(status, 0);
  EXPECT_THAT(names(), UnorderedElementsAre("Shot.png"));
}

TEST_F(EditorCopyTest, NothingIsOverwrittenWhenAllNamesAreTaken) {
  std::ofstream(folder_.path("Shot redacted.png")) << "other";
  for (int number = 2; number < 1000; ++number) {
    std::ofstream(folder_.path("Shot redacted " + std::to_string(number) + ".png")) << "other";
  }
  EXPECT_EQ(save({markOf(Kind::redact)}).outcome, Outcome::NotWritten);
  EXPECT_EQ(fs::file_size(folder_.path("Shot redacted.png")), 5U);
}

TEST(EditorPictureTest, IsThereAtItsFullSizeAndInHalves) {
  const Testing::TemporaryFolder folder;
  const auto path = folder.path("large.png");
  Testing::writePicture(path, 2400, 1200, 5);
  const auto picture = loadEditorPicture(path);
  EXPECT_EQ(picture.size(), QSizeF(2400, 1200));
  EXPECT_EQ(picture.level(2400).width(), 2400);
  EXPECT_EQ(picture.level(9000).width(), 2400);
  EXPECT_EQ(picture.level(1200).width(), 1200);
  EXPECT_EQ(picture.level(1201).width(), 2400);
  EXPECT_EQ(picture.level(10).width(), 600);
  EXPECT_EQ(picture.levels.front(), ImageFile::picture(path));
}

TEST(EditorPictureTest, TheSmallestAndTheLongestAreTaken) {
  const Testing::TemporaryFolder folder;
  const auto dot = folder.path("dot.png");
  Testing::writePicture(dot, 1, 1);
  EXPECT_EQ(loadEditorPicture(dot).size(), QSizeF(1, 1));
  const auto strip = folder.path("strip.png");
  Testing::writePicture(strip, 30'000, 100);
  const auto picture = loadEditorPicture(strip);
  EXPECT_EQ(picture.size(), QSizeF(30'000, 100));
  EXPECT_FALSE(picture.blurred.isNull());
}

TEST(EditorPictureTest, WhatIsNoPictureHasNoLevels) {
  const Testing::TemporaryFolder folder;
  const auto path = folder.path("text.png");
  std::ofstream(path) << "no picture";
  EXPECT_TRUE(loadEditorPicture(path).isNull());
  EXPECT_TRUE(loadEditorPicture(folder.path("missing.png")).isNull());
  EXPECT_EQ(loadEditorPicture(path).size(), QSizeF());
}

}  // namespace
}  // namespace Nimbrel
