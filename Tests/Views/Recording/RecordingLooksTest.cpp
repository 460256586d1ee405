#include "Support/Waiting.h"
#include "Views/Recording/RecordingFixture.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"

#include <QApplication>
#include <QPainter>

#include <cmath>

namespace Nimbrel {
namespace {

using namespace Testing;

constexpr QSize desktopSize(1280, 800);

class RecordingLooksTest : public RecordingFixture {
 protected:
  RecordingLooksTest() { path_ = home_.desktop("Screen recording 2026-11-12 13-58-04.mov"); }

  /// As it is painted, at its own scale.
  [[nodiscard]] static QImage drawn(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_RGB32);
    image.fill(themeColor(Token::Group));
    widget.render(&image);
    return image;
  }
  /// The colour near the upper edge, which no bar reaches, at so much of the width.
  [[nodiscard]] QColor backgroundAt(double share) const {
    const auto image = drawn(*strip());
    return image.pixelColor(static_cast<int>(share * image.width()), 1);
  }
};

TEST_F(RecordingLooksTest, WhatIsKeptOfTheSoundStandsOnTheSoftAccent) {
  writeRecording(4, {1, 3});
  openAndWait();
  EXPECT_EQ(backgroundAt(0.25), themeColor(Token::AccentSoft));
  move(start(), 2);
  EXPECT_EQ(backgroundAt(0.25), themeColor(Token::Quaternary));
  EXPECT_EQ(backgroundAt(0.75), themeColor(Token::AccentSoft));
}

TEST_F(RecordingLooksTest, WhatGoesWithTheSilenceLosesIt) {
  writeRecording(4, {1, 3});
  openAndWait();
  const auto silent = [this] {
    const auto image = drawn(*strip());
    int soft = 0;
    for (int x = image.width() * 45 / 100; x < image.width() * 55 / 100; ++x) {
      soft += image.pixelColor(x, 1) == themeColor(Token::AccentSoft) ? 1 : 0;
    }
    return soft;
  };
  EXPECT_GT(silent(), 0);
  removeSilence()->click();
  EXPECT_EQ(silent(), 0);
  EXPECT_EQ(backgroundAt(0.25), themeColor(Token::AccentSoft)) << "what is audible stays";
}

TEST_F(RecordingLooksTest, TheStripFollowsTheDirectionOfTheScript) {
  writeRecording(4, {0.5});
  openAndWait();
  removeSilence()->click();
  EXPECT_EQ(backgroundAt(0.1), themeColor(Token::AccentSoft));
  sheet_->setLayoutDirection(Qt::RightToLeft);
  EXPECT_EQ(backgroundAt(0.9), themeColor(Token::AccentSoft));
  EXPECT_NE(backgroundAt(0.1), themeColor(Token::AccentSoft));
}

TEST_F(RecordingLooksTest, TheSheetKeepsItsSizeDuringAnExport) {
  writeLongRecording();
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return textOf("recordingTools.endTime") == "20:00"; }));
  const auto size = sheet_->size();
  save()->click();
  ASSERT_TRUE(waitUntil([this] { return !textOf("recordingTools.timeLeft").empty(); }));
  EXPECT_EQ(sheet_->size(), size);
}

/// A desktop on which somebody works, with a caption that changes.
QImage desktopPicture(int number, QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(QColor(0x35, 0x50, 0x7A));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(QRect(size.width() / 8, size.height() / 8, size.width() * 5 / 8, size.height() * 5 / 8), Qt::white);
  painter.fillRect(QRect(size.width() / 8, size.height() / 8, size.width() * 5 / 8, size.height() / 16),
                   QColor(0xDF, 0xE2, 0xE7));
  for (int line = 0; line < 3 + number % 8; ++line) {
    painter.fillRect(QRect(size.width() / 6, size.height() / 4 + line * size.height() / 20,
                           size.width() / 2 - line * 37 % 150, size.height() / 60),
                     QColor(0x59, 0x61, 0x6B));
  }
  return image;
}

TEST_F(RecordingLooksTest, Pictures) {
  std::vector<double> clicks;
  for (double time = 4; time < 70; time += std::fmod(time, 20) < 11 ? 0.31 : 3.7) clicks.push_back(time);
  MadeMovie movie{.size = desktopSize, .times = steadyTimes(70, 1), .end = 70};
  movie.sound = MadeMovie::Sound{.end = 70, .clicks = clicks};
  movie.picture = desktopPicture;
  writeMovie(path_, movie);
  openAndWait();
  move(end(), 52);
  move(start(), 6);
  ASSERT_TRUE(comesToShow(6));
  keepPictures(*sheet_, QStringLiteral("recording-tools"));
  removeSilence()->click();
  keepPictures(*sheet_, QStringLiteral("recording-tools-silence"));
}

TEST_F(RecordingLooksTest, PicturesDuringAnExport) {
  MadeMovie movie{.size = desktopSize, .times = steadyTimes(70, 1), .end = 70};
  movie.picture = desktopPicture;
  const auto piece = home_.path("piece.mov");
  writeMovie(piece, movie);
  repeatMovie(piece, path_, 60);
  openAndWait();
  save()->click();
  ASSERT_TRUE(waitUntil([this] { return !textOf("recordingTools.timeLeft").empty(); }));
  keepPictures(*sheet_, QStringLiteral("recording-tools-busy"));
  EXPECT_EQ(note(), "Exporting recording…") << "the pictures are of what still runs";
}

TEST_F(RecordingLooksTest, PicturesOfARecordingThatCannotBeRead) {
  home_.folder().write("Desktop/Screen recording 2026-11-12 13-58-04.mov", "no movie");
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return !note().empty() && !strip()->words().isEmpty(); }));
  keepPictures(*sheet_, QStringLiteral("recording-tools-unreadable"));
}

/// With text half as large again.
class LargeTextRecordingLooksTest : public RecordingLooksTest {
 protected:
  LargeTextRecordingLooksTest() {
    auto font = usual_;
    font.setPointSizeF(15);
    setInterfaceFont(font);
    QApplication::setFont(font);
  }
  ~LargeTextRecordingLooksTest() override {
    setInterfaceFont(usual_);
    QApplication::setFont(usual_);
  }

 private:
  QFont usual_ = interfaceFont();
};

TEST_F(LargeTextRecordingLooksTest, NothingIsCut) {
  writeRecording(2, {1});
  openAndWait();
  for (const auto* button : sheet_->findChildren<QPushButton*>()) {
    EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
    EXPECT_GE(button->height(), button->fontMetrics().height()) << button->text().toStdString();
  }
  for (const auto* label : sheet_->findChildren<QLabel*>()) {
    if (!label->isVisible() || label->objectName() == QStringLiteral("recordingTools.fileName")) continue;
    EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text())) << label->text().toStdString();
  }
  EXPECT_LT(sheet_->height(), 736) << "it fits a small screen";
  keepPictures(*sheet_, QStringLiteral("recording-tools-large-text"));
}

}  // namespace
}  // namespace Nimbrel
