#include "Views/Inspector/TextScroller.h"

#include "Views/Inspector/InspectorFixture.h"
#include "Views/Shared/Painting.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextBlock>

namespace Nimbrel {
namespace {

class InspectorText : public Testing::InspectorFixture {
 protected:
  [[nodiscard]] TextScroller& scroller() const { return at<TextScroller>("ocr"); }
  [[nodiscard]] QImage picture() const {
    QImage image(scroller().size(), QImage::Format_RGB32);
    image.fill(themeColor(Token::Group));
    scroller().render(&image);
    return image;
  }
  /// How many pixels have the colour of a match on the box.
  [[nodiscard]] int markedPixels() const {
    QImage one(1, 1, QImage::Format_RGB32);
    one.fill(themeColor(Token::Base));
    QPainter(&one).fillRect(one.rect(), themeColor(Token::FoundText));
    const auto image = picture();
    int marked = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) marked += image.pixel(x, y) == one.pixel(0, 0) ? 1 : 0;
    }
    return marked;
  }
  [[nodiscard]] QString copied() const {
    scroller().selectAll();
    scroller().copy();
    return QGuiApplication::clipboard()->text();
  }
};

TEST_F(InspectorText, BeforeItIsReadItIsBeingRead) {
  show(add("one.png"));
  EXPECT_TRUE(isShown("reading"));
  EXPECT_FALSE(isShown("noText"));
  EXPECT_FALSE(isShown("ocr"));
  EXPECT_FALSE(isShown("copyAll"));
}

TEST_F(InspectorText, NothingReadIsSaidSo) {
  show(addRead("one.png", ""));
  EXPECT_FALSE(isShown("reading"));
  EXPECT_TRUE(isShown("noText"));
  EXPECT_EQ(textOf("noText"), "No text found");
  EXPECT_FALSE(isShown("ocr"));
  EXPECT_FALSE(isShown("copyAll"));
}

TEST_F(InspectorText, ATextThatComesLaterIsShown) {
  show(add("one.png"));
  store_->database().setOCR(shot("one.png")->id, "Subtotal\nTotal", {});
  store_->reload();
  EXPECT_FALSE(isShown("reading"));
  EXPECT_EQ(scroller().toPlainText(), QStringLiteral("Subtotal\nTotal"));
}

TEST_F(InspectorText, MatchesAreCountedAndMarked) {
  show(addRead("one.png", "Subtotal\nVAT\nTotal"));
  EXPECT_FALSE(isShown("matchCount"));
  EXPECT_FALSE(isShown("findClear"));
  EXPECT_EQ(markedPixels(), 0);
  type("find", QStringLiteral("total"));
  EXPECT_EQ(textOf("matchCount"), "2 matches");
  EXPECT_TRUE(isShown("matchCount"));
  EXPECT_GT(markedPixels(), 0);
  click("findClear");
  EXPECT_EQ(field("find").text(), QString());
  EXPECT_FALSE(isShown("matchCount"));
  EXPECT_FALSE(isShown("findClear"));
  EXPECT_EQ(markedPixels(), 0);
}

TEST_F(InspectorText, AQueryWithoutAMatchCountsNoneAndLeavesTheText) {
  show(addRead("one.png", "Subtotal\nTotal"));
  type("find", QStringLiteral("absent"));
  EXPECT_EQ(textOf("matchCount"), "0 matches");
  EXPECT_EQ(scroller().toPlainText(), QStringLiteral("Subtotal\nTotal"));
  EXPECT_EQ(markedPixels(), 0);
}

TEST_F(InspectorText, AnotherShotIsNotSearched) {
  show(addRead("one.png", "Total"));
  type("find", QStringLiteral("total"));
  show(addRead("two.png", "Total"));
  EXPECT_EQ(field("find").text(), QString());
  EXPECT_FALSE(isShown("matchCount"));
}

TEST_F(InspectorText, CopyAllCopiesTheTextAsItIs) {
  show(addRead("one.png", "first\nsecond"));
  click("copyAll");
  EXPECT_EQ(pasteboard_->text, "first\nsecond");
}

TEST_F(InspectorText, WhatIsSelectedIsCopiedAsItStandsInTheText) {
  const auto text = QStringLiteral("a\r\nb\u00A0c\nd") + QString(5000, QLatin1Char('x'));
  show(addRead("one.png", text.toStdString()));
  EXPECT_EQ(copied(), text);
}

TEST_F(InspectorText, IsAsHighAsItsLinesUpToALimit) {
  show(addRead("one.png", "one line"));
  EXPECT_EQ(scroller().height(), 2 * 10 + lineHeight(TextStyle::Callout) + 4);
  std::string lines;
  for (int i = 0; i < 40; ++i) lines += "line\n";
  show(addRead("two.png", lines));
  EXPECT_EQ(scroller().height(), 240);
}

TEST_F(InspectorText, OfAMegabyteOnlyWhatIsSeenIsLaidOut) {
  std::string text;
  while (text.size() < 1'000'000) text += "some words of a line\n";
  show(addRead("one.png", text));
  type("find", QStringLiteral("e"));
  EXPECT_EQ(textOf("matchCount"), std::to_string(2 * ((1'000'000 + 20) / 21)) + " matches");
  EXPECT_GT(markedPixels(), 0);
  int laidOut = 0;
  for (auto block = scroller().document()->firstBlock(); block.isValid(); block = block.next()) {
    laidOut += block.layout()->lineCount() > 0 ? 1 : 0;
  }
  EXPECT_LT(laidOut, 200);
  EXPECT_EQ(copied().size(), static_cast<qsizetype>(text.size()));
}

TEST_F(InspectorText, AMegabyteInOneLineIsLaidOutInPieces) {
  const std::string text(1'000'000, 'x');
  show(addRead("one.png", text));
  EXPECT_EQ(scroller().height(), 240);
  EXPECT_EQ(scroller().document()->blockCount(), 500);
  EXPECT_EQ(copied().toStdString(), text);
}

TEST_F(InspectorText, AMatchOverTheEndOfAPieceIsMarkedOnBothSides) {
  const std::string text(3000, 'x');
  show(addRead("one.png", text));
  TextScroller& shown = scroller();
  shown.setMatches({{.start = 0, .length = 3000, .format = [] {
                       QTextCharFormat format;
                       format.setBackground(themeColor(Token::FoundText));
                       return format;
                     }()}});
  const auto top = markedPixels();
  QTest::keyClick(&shown, Qt::Key_End, Qt::ControlModifier);
  EXPECT_GT(top, 0);
  EXPECT_GT(markedPixels(), 0);
}

}  // namespace
}  // namespace Nimbrel
