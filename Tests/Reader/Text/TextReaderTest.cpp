#include "Reader/TextReader.h"

#include <gmock/gmock.h>

#include <QPainter>

namespace Nimbrel::Reader {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

/// Loading takes a while, and a reader is kept in the program as well.
TextReader& reader() {
  static TextReader reader("eng");
  return reader;
}

class Drawing {
 public:
  explicit Drawing(QColor paper = Qt::white, QSize size = {420, 120}, double scale = 1)
      : picture_((QSizeF(size) * scale).toSize(), QImage::Format_RGB32) {
    picture_.fill(paper);
    painter_.begin(&picture_);
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter_.scale(scale, scale);
  }

  QPainter& painter() { return painter_; }

  Drawing& text(int x, int y, const QString& text, QColor ink = Qt::black, int pixels = 14) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    painter_.setFont(font);
    painter_.setPen(ink);
    painter_.drawText(x, y, text);
    return *this;
  }

  QImage finished() {
    painter_.end();
    return picture_;
  }

 private:
  QImage picture_;
  QPainter painter_;
};

std::vector<std::string> textsOf(const std::vector<TextBlock>& blocks) {
  std::vector<std::string> texts;
  for (const auto& block : blocks) texts.push_back(block.text);
  return texts;
}

std::vector<std::string> textsIn(const QImage& picture, const std::vector<QRect>& blanked = {}) {
  return textsOf(reader().read(picture, blanked));
}

TEST(TextReader, ReadsDarkTextOnALightPage) {
  const auto picture = Drawing()
                           .text(20, 40, QStringLiteral("Invoice from Brightwater"))
                           .text(20, 80, QStringLiteral("Total due 1,284.50 EUR"))
                           .finished();
  EXPECT_THAT(textsIn(picture), UnorderedElementsAre("Invoice from Brightwater", "Total due 1,284.50 EUR"));
}

TEST(TextReader, ReadsLightTextOnADarkPage) {
  const auto picture = Drawing(QColor(30, 31, 36))
                           .text(20, 40, QStringLiteral("Meeting notes of today"), QColor(220, 220, 226))
                           .finished();
  EXPECT_THAT(textsIn(picture), ElementsAre("Meeting notes of today"));
}

TEST(TextReader, ReadsColoursThatHaveTheSameGrey) {
  const auto picture =
      Drawing(QColor(90, 90, 90)).text(20, 40, QStringLiteral("Server stopped"), QColor(190, 50, 40)).finished();
  EXPECT_THAT(textsIn(picture), ElementsAre("Server stopped"));
}

TEST(TextReader, ReadsSeveralColoursInOneLine) {
  Drawing drawing(QColor(24, 24, 28));
  drawing.text(20, 40, QStringLiteral("Deploy"), QColor(240, 240, 240));
  drawing.text(78, 40, QStringLiteral("finished"), QColor(90, 150, 90));
  EXPECT_THAT(textsIn(drawing.finished()), ElementsAre("Deploy finished"));
}

TEST(TextReader, ReadsSmallType) {
  const auto picture =
      Drawing().text(20, 40, QStringLiteral("Last change by another member"), Qt::black, 10).finished();
  EXPECT_THAT(textsIn(picture), ElementsAre("Last change by another member"));
}

TEST(TextReader, ReadsADisplayOfDoubleDensity) {
  const auto picture =
      Drawing(Qt::white, {420, 120}, 2).text(20, 40, QStringLiteral("Choose a folder first")).finished();
  EXPECT_THAT(textsIn(picture), ElementsAre("Choose a folder first"));
}

TEST(TextReader, ReadsLightTextOnAButton) {
  Drawing drawing;
  drawing.painter().setPen(Qt::NoPen);
  drawing.painter().setBrush(QColor(20, 110, 220));
  drawing.painter().drawRoundedRect(20, 20, 90, 30, 6, 6);
  drawing.painter().drawRoundedRect(150, 24, 52, 20, 10, 10);
  drawing.text(38, 40, QStringLiteral("Submit"), Qt::white);
  drawing.text(162, 38, QStringLiteral("New"), Qt::white, 12);
  EXPECT_THAT(textsIn(drawing.finished()), UnorderedElementsAre("Submit", "New"));
}

TEST(TextReader, ReadsTheCellsOfAGrid) {
  Drawing drawing(Qt::white, {420, 160});
  for (int x = 20; x <= 380; x += 120) drawing.painter().fillRect(x, 20, 1, 120, QColor(180, 180, 180));
  for (int y = 20; y <= 140; y += 40) drawing.painter().fillRect(20, y, 361, 1, QColor(180, 180, 180));
  drawing.text(26, 46, QStringLiteral("Apples"))
      .text(146, 46, QStringLiteral("240"))
      .text(266, 126, QStringLiteral("Sum 36"));
  EXPECT_THAT(textsIn(drawing.finished()), UnorderedElementsAre("Apples", "240", "Sum 36"));
}

TEST(TextReader, ColumnsAtOneHeightAreBlocksOfTheirOwn) {
  const auto picture =
      Drawing().text(20, 60, QStringLiteral("Name of file")).text(260, 60, QStringLiteral("Modified")).finished();
  auto blocks = reader().read(picture, {});
  ASSERT_THAT(blocks, SizeIs(2));
  std::ranges::sort(blocks, {}, [](const TextBlock& block) { return block.rect.left(); });
  EXPECT_THAT(textsOf(blocks), ElementsAre("Name of file", "Modified"));
  EXPECT_NEAR(blocks[0].rect.left(), 20.0 / 420, 0.01);
  EXPECT_NEAR(blocks[1].rect.left(), 260.0 / 420, 0.01);
  EXPECT_NEAR(blocks[0].rect.center().y(), 55.0 / 120, 0.03);
  EXPECT_NEAR(blocks[1].rect.center().y(), 55.0 / 120, 0.03);
  EXPECT_LT(blocks[0].rect.right(), blocks[1].rect.left());
  EXPECT_NEAR(blocks[0].rect.height(), 14.0 / 120, 0.05);
}

TEST(TextReader, DoesNotReadWhatIsBlanked) {
  const auto picture =
      Drawing().text(20, 40, QStringLiteral("Visible line")).text(20, 90, QStringLiteral("Hidden line")).finished();
  EXPECT_THAT(textsIn(picture, {QRect(0, 70, 420, 40)}), ElementsAre("Visible line"));
  EXPECT_THAT(textsIn(picture, {QRect(-50, -50, 4000, 4000)}), IsEmpty());
}

TEST(TextReader, ReadsTheSameTwice) {
  const auto picture =
      Drawing().text(20, 40, QStringLiteral("Once and again")).text(20, 80, QStringLiteral("Another")).finished();
  EXPECT_EQ(reader().read(picture, {}), reader().read(picture, {}));
}

TEST(TextReader, ABlankPageHasNoText) { EXPECT_THAT(textsIn(Drawing().finished()), IsEmpty()); }

TEST(TextReader, WhatTakesLongerThanItMayIsLeftUnread) {
  TextReader hasty("eng", std::chrono::seconds(0));
  EXPECT_THAT(hasty.read(Drawing().text(20, 40, QStringLiteral("Unread")).finished(), {}), IsEmpty());
}

TEST(TextReader, WithoutAnyModelThereIsNoText) {
  TextReader none("xyz");
  EXPECT_THAT(none.read(Drawing().text(20, 40, QStringLiteral("Unreadable")).finished(), {}), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel::Reader
