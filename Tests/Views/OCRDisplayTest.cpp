#include "Views/Shared/OCRDisplay.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>

#include <utility>
#include <vector>

namespace Nimbrel::OCRDisplay {
namespace {

using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

const QBrush someBackground(QColor(1, 2, 3));

/// Start and length of each stretch that is highlighted.
std::vector<std::pair<int, int>> stretches(const QString& text, const QString& query) {
  std::vector<std::pair<int, int>> found;
  for (const auto& range : highlighted(text, query, someBackground).formats) {
    found.emplace_back(range.start, range.length);
  }
  return found;
}

TEST(OCRDisplay, MatchesDoNotOverlap) {
  EXPECT_EQ(matchCount(u"aaaa"_s, u"aa"_s), 2);
  EXPECT_EQ(matchCount(u"aaaaa"_s, u"aa"_s), 2);
  EXPECT_THAT(stretches(u"aaaaa"_s, u"aa"_s), ElementsAre(Pair(0, 2), Pair(2, 2)));
}

TEST(OCRDisplay, CaseDoesNotMatter) {
  EXPECT_EQ(matchCount(u"Total TOTAL total"_s, u"toTAL"_s), 3);
  EXPECT_EQ(matchCount(u"ÜBER über"_s, u"Über"_s), 2);
}

TEST(OCRDisplay, TheQueryIsTakenAsItStands) {
  EXPECT_EQ(matchCount(u"a.c abc"_s, u"a.c"_s), 1);
  EXPECT_EQ(matchCount(u"(x) [x] \\d 5"_s, u"\\d"_s), 1);
  EXPECT_EQ(matchCount(u"two  blanks"_s, u"two blanks"_s), 0);
}

TEST(OCRDisplay, WhiteSpaceAndLineBreaksAroundTheQueryDoNotCount) {
  EXPECT_EQ(matchCount(u"one two"_s, u" \t\u00A0two\r\n\u2028"_s), 1);
}

TEST(OCRDisplay, ABlankQueryMatchesNothing) {
  for (const auto& query : {QString(), u" \n\t"_s}) {
    EXPECT_EQ(matchCount(u"one two"_s, query), 0);
    const auto result = highlighted(u"one two"_s, query, someBackground);
    EXPECT_EQ(result.text, u"one two"_s);
    EXPECT_THAT(result.formats, IsEmpty());
  }
}

TEST(OCRDisplay, AnEmptyTextHasNoMatches) {
  EXPECT_EQ(matchCount(QString(), u"a"_s), 0);
  EXPECT_EQ(highlighted(QString(), u"a"_s, someBackground).text, QString());
}

TEST(OCRDisplay, TheTextIsLeftAsItIs) {
  const auto text = u" a\tB\r\n\u00E4a\U0001F600a "_s;
  const auto result = highlighted(text, u"A"_s, someBackground);
  EXPECT_EQ(result.text, text);
  EXPECT_THAT(stretches(text, u"A"_s), ElementsAre(Pair(1, 1), Pair(7, 1), Pair(10, 1)));
}

TEST(OCRDisplay, MatchesStandOnTheirBackgroundAndNothingElseChanges) {
  const auto result = highlighted(u"red car"_s, u"car"_s, someBackground);
  ASSERT_EQ(result.formats.size(), 1);
  EXPECT_EQ(result.formats[0].format.background(), someBackground);
  EXPECT_EQ(result.formats[0].format.propertyCount(), 1);
}

TEST(OCRDisplay, TheBackgroundIsTheAccentColourAtAQuarterOfItsStrength) {
  QPalette palette;
  palette.setColor(QPalette::Highlight, QColor(10, 120, 250));
  const auto colour = matchBackground(palette).color();
  EXPECT_EQ(colour.rgb() & 0xFFFFFF, QColor(10, 120, 250).rgb() & 0xFFFFFF);
  EXPECT_NEAR(colour.alphaF(), 0.25, 0.01);
}

TEST(OCRDisplay, MatchesStandOutWhenTheTextIsPainted) {
  const auto result = highlighted(u"red car"_s, u"car"_s, QBrush(Qt::green));
  QTextLayout layout(result.text);
  layout.setFormats(result.formats);
  layout.beginLayout();
  const auto line = layout.createLine();
  layout.endLayout();

  QImage picture(200, 60, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  layout.draw(&painter, QPointF(0, 0));
  painter.end();
  // Between the letters and the line above them there is nothing but background.
  const auto colourIn = [&](int character) {
    const auto middle = (line.cursorToX(character) + line.cursorToX(character + 1)) / 2;
    return picture.pixelColor(static_cast<int>(middle), 0);
  };
  EXPECT_EQ(colourIn(1), QColor(Qt::white));
  for (const int character : {4, 5, 6}) EXPECT_EQ(colourIn(character), QColor(Qt::green)) << character;
}

TEST(OCRDisplay, AQueryLongerThanTheTextMatchesNothing) { EXPECT_EQ(matchCount(u"ab"_s, u"abc"_s), 0); }

}  // namespace
}  // namespace Nimbrel::OCRDisplay
