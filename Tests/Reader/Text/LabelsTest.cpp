#include "Reader/Components.h"
#include "Reader/EdgeMask.h"
#include "Reader/Labels.h"

#include <gmock/gmock.h>

#include <QPainter>

namespace Nimbrel::Reader {
namespace {

using ::testing::IsEmpty;

constexpr QRgb blue = qRgb(20, 110, 220);

/// What is drawn on a white page of 320 by 160.
class Labels : public ::testing::Test {
 protected:
  Labels() {
    page_.fill(Qt::white);
    painter_.begin(&page_);
  }

  std::vector<Label> found() {
    painter_.end();
    return labelsAmong(componentsOf(edgeMask(page_, {0, 0, page_.width(), page_.height()})), page_);
  }

  /// Of some labels, one for each edge of the frame: whether they are all nearly this box, of this colour.
  static void expectAll(const std::vector<Label>& labels, const Box& box, QRgb colour) {
    ASSERT_FALSE(labels.empty());
    for (const auto& label : labels) {
      EXPECT_EQ(label.colour, colour);
      EXPECT_TRUE(box.contains(label.box));
      EXPECT_TRUE(label.box.contains(box.grownBy(-4, -4)));
    }
  }

  QImage page_{320, 160, QImage::Format_RGB32};
  QPainter painter_;
};

TEST_F(Labels, AButtonIsOneInItsOwnColour) {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(QColor(blue));
  painter_.drawRoundedRect(100, 60, 90, 30, 6, 6);
  expectAll(found(), {100, 60, 190, 90}, blue);
}

TEST_F(Labels, AFieldIsOneInTheColourOfThePage) {
  painter_.setPen(QColor(120, 120, 120));
  painter_.drawRect(100, 60, 90, 30);
  expectAll(found(), {100, 60, 191, 91}, qRgb(255, 255, 255));
}

TEST_F(Labels, ATextOnAButtonDoesNotHideIt) {
  painter_.fillRect(100, 60, 90, 30, QColor(blue));
  for (int x = 120; x < 170; x += 8) painter_.fillRect(x, 69, 3, 12, Qt::white);
  expectAll(found(), {100, 60, 190, 90}, blue);
}

TEST_F(Labels, WhatIsOpenOnOneSideIsNone) {
  painter_.fillRect(100, 60, 90, 2, Qt::black);
  painter_.fillRect(100, 60, 2, 30, Qt::black);
  painter_.fillRect(100, 88, 90, 2, Qt::black);
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(Labels, ALetterIsNone) {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(QPen(Qt::black, 5));
  painter_.drawEllipse(100, 60, 22, 26);
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(Labels, AreasOfManyColoursAndLargeOrSmallOnesAreNone) {
  for (int x = 0; x < 90; ++x) painter_.fillRect(10 + x, 10, 1, 30, QColor(250 - 2 * x, 2 * x, x % 2 * 90));
  painter_.fillRect(120, 20, 120, 80, QColor(blue));
  painter_.fillRect(20, 120, 30, 8, QColor(blue));
  EXPECT_THAT(found(), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel::Reader
