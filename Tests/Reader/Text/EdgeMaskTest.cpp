#include "Reader/Components.h"
#include "Reader/EdgeMask.h"
#include "Reader/Marks.h"
#include "Reader/StraightLines.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <algorithm>

namespace Nimbrel::Reader {
namespace {

QImage page(QRgb colour) {
  QImage picture(160, 120, QImage::Format_RGB32);
  picture.fill(colour);
  return picture;
}

Plane maskOf(const QImage& picture) { return edgeMask(picture, {0, 0, picture.width(), picture.height()}); }

bool isEmpty(const Plane& mask) {
  return std::ranges::all_of(mask.bytes(), [](std::uint8_t mark) { return mark == 0; });
}

TEST(EdgeMask, AFlatPictureIsEmpty) { EXPECT_TRUE(isEmpty(maskOf(page(qRgb(20, 90, 160))))); }

TEST(EdgeMask, BoxesEndWhereTheInkDoes) {
  auto picture = page(qRgb(255, 255, 255));
  QPainter(&picture).fillRect(QRect(50, 40, 6, 9), Qt::black);
  const auto components = componentsOf(maskOf(picture));
  ASSERT_EQ(components.size(), 1U);
  EXPECT_EQ(components[0].box, (Box{50, 40, 56, 49}));
}

TEST(EdgeMask, ColoursOfTheSameGreyDiffer) {
  auto picture = page(qRgb(90, 90, 90));
  QPainter(&picture).fillRect(QRect(50, 40, 6, 9), QColor(170, 60, 40));
  EXPECT_EQ(componentsOf(maskOf(picture)).size(), 1U);
}

TEST(StraightLines, AGridVanishesAndALetterInItStays) {
  auto picture = page(qRgb(255, 255, 255));
  QPainter painter(&picture);
  for (int x = 10; x < 160; x += 70) painter.fillRect(x, 0, 1, 120, QColor(200, 200, 200));
  for (int y = 10; y < 120; y += 30) painter.fillRect(0, y, 160, 1, QColor(200, 200, 200));
  painter.fillRect(30, 20, 2, 9, Qt::black);
  painter.fillRect(30, 27, 6, 2, Qt::black);
  painter.end();
  auto mask = maskOf(picture);
  removeStraightLines(mask);
  const auto components = componentsOf(mask);
  ASSERT_EQ(components.size(), 1U);
  EXPECT_EQ(components[0].box, (Box{30, 20, 36, 29}));
}

TEST(StraightLines, MarksWhatIsLeftOfARoundFrame) {
  auto picture = page(qRgb(255, 255, 255));
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::black);
  painter.drawRoundedRect(QRectF(10.5, 10.5, 130, 90), 8, 8);
  painter.end();
  auto mask = maskOf(picture);
  removeStraightLines(mask);
  const auto components = componentsOf(mask);
  ASSERT_FALSE(components.empty());
  for (const auto& component : components) EXPECT_NE(component.marks & lineEnd, 0) << component.box.left;
}

TEST(EdgeMask, ALetterMayHaveTheColourOfThePageBesideItsGround) {
  auto picture = page(qRgb(255, 255, 255));
  QPainter painter(&picture);
  painter.fillRect(0, 0, 160, 48, QColor(30, 90, 200));
  painter.fillRect(50, 34, 3, 8, Qt::white);
  painter.end();
  auto mask = maskOf(picture);
  removeStraightLines(mask);
  dropFurtherBackgrounds(picture, mask);
  const auto components = componentsOf(mask);
  ASSERT_EQ(components.size(), 1U);
  EXPECT_EQ(components[0].box, (Box{50, 34, 53, 42}));
}

}  // namespace
}  // namespace Nimbrel::Reader
