#include "CtlFixture.h"
#include "Support/EnvironmentVariable.h"
#include "Support/SmallDisk.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace Nimbrel {
namespace {

using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// A picture "in.png", 420 x 200, and marks in "marks.json".
class FlattenCommandTest : public Testing::CtlFixture {
 protected:
  FlattenCommandTest() {
    QImage image(420, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    Testing::writePicture(image, home_.path("in.png"));
  }

  [[nodiscard]] Testing::ProgramOutput flatten(const std::string& marks, const std::string& target = "out.png") const {
    home_.folder().write("marks.json", marks);
    return ctl({"flatten", "in.png", target, "--marks", "marks.json"});
  }

  [[nodiscard]] QImage result() const { return QImage(QString::fromStdString(home_.path("out.png"))); }
};

TEST_F(FlattenCommandTest, BurnsMarksIntoACopy) {
  const auto before = contentOf(home_.path("in.png"));
  const auto output = flatten(R"([{"kind": "redact", "start": [0.25, 0.25], "end": [0.5, 0.5]},
                                  {"kind": "step", "start": [0.75, 0.5], "number": 3, "colorIndex": 2}])");
  ASSERT_EQ(output.status, 0) << output.errors;
  EXPECT_EQ(output.output, home_.path("out.png") + "\n");
  ASSERT_EQ(result().size(), QSize(420, 200));
  EXPECT_EQ(result().pixel(103, 48), qRgb(0, 0, 0));
  EXPECT_EQ(result().pixel(102, 48), qRgb(255, 255, 255));
  EXPECT_EQ(result().pixel(304, 100), qRgb(26, 122, 242));
  EXPECT_EQ(contentOf(home_.path("in.png")), before);
  EXPECT_THAT(Testing::chunksOfPng(home_.path("out.png")), ElementsAre("IHDR", "sRGB", "IDAT", "IEND"));
}

TEST_F(FlattenCommandTest, SetsTypeWithoutADisplay) {
  const Testing::EnvironmentVariable noDisplay("DISPLAY", std::nullopt);
  const Testing::EnvironmentVariable noWayland("WAYLAND_DISPLAY", std::nullopt);
  const Testing::EnvironmentVariable noPlatform("QT_QPA_PLATFORM", std::nullopt);
  const auto output = flatten(R"([{"kind": "label", "start": [0.25, 0.25], "text": "HHHH", "colorIndex": 4}])");
  ASSERT_EQ(output.status, 0) << output.errors;
  EXPECT_EQ(output.errors, "");
  int inked = 0;
  for (int y = 45; y < 75; ++y) {
    for (int x = 100; x < 180; ++x) inked += qGray(result().pixel(x, y)) < 50 ? 1 : 0;
  }
  EXPECT_GT(inked, 200);
}

TEST_F(FlattenCommandTest, TellsThePathAsJson) {
  home_.folder().write("marks.json", "[]");
  const auto told = json({"flatten", "in.png", "out.png", "--marks", "marks.json"}).object();
  EXPECT_EQ(told.value(QStringLiteral("path")).toString().toStdString(), home_.path("out.png"));
  EXPECT_EQ(told.size(), 1);
}

TEST_F(FlattenCommandTest, AFileThatIsThereIsRefused) {
  home_.folder().write("out.png", "mine");
  const auto output = flatten("[]");
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: cannot write out.png: it is already there\n");
  EXPECT_EQ(contentOf(home_.path("out.png")), "mine");
  EXPECT_EQ(flatten("[]", "in.png").status, 1);
}

TEST_F(FlattenCommandTest, ALinkThatLeadsNowhereIsThereToo) {
  std::filesystem::create_symlink("elsewhere.png", home_.path("out.png"));
  EXPECT_EQ(flatten("[]").status, 1);
  EXPECT_FALSE(std::filesystem::exists(home_.path("elsewhere.png")));
}

TEST_F(FlattenCommandTest, AFolderThatIsNotThereIsRefused) {
  const auto output = flatten("[]", "missing/out.png");
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: cannot write missing/out.png: no such folder\n");
}

TEST_F(FlattenCommandTest, MarksThatAreWrongFail) {
  const auto output = flatten(R"([{"kind": "step", "start": [0, 0]}, {"kind": "circle", "start": [0, 0]}])");
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: marks.json: marks[1]: \"kind\" is unknown: circle\n");
  EXPECT_THAT(flatten("no json").errors, StartsWith("nimbrelctl: marks.json: the marks are no JSON: "));
  EXPECT_FALSE(std::filesystem::exists(home_.path("out.png")));
}

TEST_F(FlattenCommandTest, WhatCannotBeReadFails) {
  home_.folder().write("marks.json", "[]");
  EXPECT_THAT(ctl({"flatten", "missing.png", "out.png", "--marks", "marks.json"}).errors,
              StartsWith("nimbrelctl: cannot read missing.png: "));
  EXPECT_THAT(ctl({"flatten", "in.png", "out.png", "--marks", "missing.json"}).errors,
              StartsWith("nimbrelctl: cannot read missing.json: "));
  const auto noPicture = ctl({"flatten", "marks.json", "out.png", "--marks", "marks.json"});
  EXPECT_EQ(noPicture.status, 1);
  EXPECT_EQ(noPicture.errors, "nimbrelctl: cannot read marks.json: no picture, or too large a one\n");
  EXPECT_FALSE(std::filesystem::exists(home_.path("out.png")));
}

TEST_F(FlattenCommandTest, MarksOfMoreThan64MegabytesAreNotRead) {
  const auto flattened = [&](std::uintmax_t size) {
    home_.folder().write("marks.json", "");
    std::filesystem::resize_file(home_.path("marks.json"), size);
    return ctl({"flatten", "in.png", "out.png", "--marks", "marks.json"});
  };
  const auto refused = flattened((64 << 20) + 1);
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.errors, "nimbrelctl: cannot read marks.json: larger than 64 MB\n");
  EXPECT_THAT(flattened(64 << 20).errors, StartsWith("nimbrelctl: marks.json: the marks are no JSON: "));
}

TEST_F(FlattenCommandTest, APathBelowAFileIsRefused) {
  const auto output = flatten("[]", "in.png/out.png");
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: cannot write in.png/out.png: no such folder\n");
}

TEST_F(FlattenCommandTest, AFolderThatCannotBeWrittenFails) {
  const auto folder = home_.folder().makeFolder("disk");
  const int status = Testing::onReadOnlyDisk(folder, [&] {
    const auto output = flatten("[]", "disk/out.png");
    return output.status == 1 && output.errors.starts_with("nimbrelctl: cannot write disk/out.png: ") ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(FlattenCommandTest, ANameThatIsTooLongFails) {
  const std::string name(300, 'x');
  const auto output = flatten("[]", name);
  EXPECT_EQ(output.status, 1);
  EXPECT_THAT(output.errors, StartsWith("nimbrelctl: cannot write " + name + ": "));
}

TEST_F(FlattenCommandTest, MarksAndBothNamesAreNeeded) {
  const auto output = ctl({"flatten", "in.png", "out.png"});
  EXPECT_EQ(output.status, 2);
  EXPECT_THAT(output.errors, HasSubstr("usage: nimbrelctl flatten [--json] --marks FILE IN OUT\n"));
  EXPECT_EQ(ctl({"flatten", "in.png", "--marks", "marks.json"}).status, 2);
}

}  // namespace
}  // namespace Nimbrel
