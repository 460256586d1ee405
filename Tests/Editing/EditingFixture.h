#pragma once

#include "Editing/Flatten.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRect>

#include <cstdlib>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A mark; `end` where it has one.
[[nodiscard]] inline Annotation mark(Annotation::Kind kind, QPointF start, QPointF end = {}, int colorIndex = 0) {
  return {.kind = kind, .start = start, .end = end, .colorIndex = colorIndex};
}

[[nodiscard]] inline Annotation step(QPointF centre, int number, int colorIndex = 0) {
  auto result = mark(Annotation::Kind::step, centre, centre, colorIndex);
  result.number = number;
  return result;
}

[[nodiscard]] inline Annotation label(QPointF corner, const std::string& text, int colorIndex = 0) {
  auto result = mark(Annotation::Kind::label, corner, corner, colorIndex);
  result.text = text;
  return result;
}

/// A picture of one colour.
[[nodiscard]] inline QImage plain(int width, int height, const QColor& colour = Qt::white) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(colour);
  return image;
}

/// Writes the picture into a folder of the test and burns marks into it.
class EditingFixture : public ::testing::Test {
 protected:
  [[nodiscard]] QImage render(const QImage& picture, const std::vector<Annotation>& marks) const {
    writePicture(picture, folder_.path("picture.png"));
    return Flatten::render(folder_.path("picture.png"), marks);
  }

  TemporaryFolder folder_;
};

/// Whether no channel differs by more than the tolerance.
[[nodiscard]] inline bool isNear(QRgb one, QRgb other, int tolerance = 1) {
  const auto differs = [&](int a, int b) { return std::abs(a - b) > tolerance; };
  return !differs(qRed(one), qRed(other)) && !differs(qGreen(one), qGreen(other)) &&
         !differs(qBlue(one), qBlue(other)) && !differs(qAlpha(one), qAlpha(other));
}

/// The pixels that differ from a colour: the smallest rectangle around them, null when there are none.
[[nodiscard]] inline QRect boundsOfOthers(const QImage& image, QRgb colour, int tolerance = 1) {
  QRect bounds;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (!isNear(image.pixel(x, y), colour, tolerance)) bounds |= QRect(x, y, 1, 1);
    }
  }
  return bounds;
}

}  // namespace Nimbrel::Testing
