// All marks on one picture, for the eyes of whoever changes how they look.

#include "EditingFixture.h"

#include <QDir>
#include <QFont>
#include <QPainter>

namespace Nimbrel {
namespace {

using namespace Testing;
using Kind = Annotation::Kind;

/// A window with lines of text.
QImage screenshot(int width, int height) {
  auto image = plain(width, height, QColor(96, 122, 160));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(QRectF(width * 0.05, height * 0.06, width * 0.9, height * 0.88), 12, 12);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(width / 60);
  painter.setFont(font);
  painter.setPen(QColor(40, 40, 48));
  for (int line = 0; line < 24; ++line) {
    painter.drawText(QPointF(width * 0.08, height * (0.13 + line * 0.034)),
                     QStringLiteral("Invoice 20%1 of the quarter was paid to account 4711-%2")
                         .arg(line, 2, 10, QLatin1Char('0'))
                         .arg(line * 37));
  }
  return image;
}

std::vector<Annotation> allMarks() {
  return {mark(Kind::redact, {0.1, 0.12}, {0.3, 0.17}),
          mark(Kind::blur, {0.4, 0.1}, {0.7, 0.27}),
          mark(Kind::box, {0.08, 0.22}, {0.33, 0.33}),
          mark(Kind::box, {0.36, 0.32}, {0.44, 0.4}, 2),
          mark(Kind::arrow, {0.69, 0.63}, {0.46, 0.41}),
          mark(Kind::arrow, {0.8, 0.5}, {0.82, 0.49}, 2),
          mark(Kind::arrow, {0.2, 0.75}, {0.45, 0.75}, 4),
          mark(Kind::highlight, {0.08, 0.39}, {0.33, 0.46}, 1),
          step({0.12, 0.55}, 1),
          step({0.18, 0.55}, 2, 1),
          step({0.24, 0.55}, 3, 2),
          step({0.3, 0.55}, 14, 4),
          step({0.36, 0.55}, 88),
          label({0.7, 0.63}, "Note"),
          label({0.7, 0.7}, "Ägypten, \"quoted\"", 2),
          label({0.7, 0.77}, "Two lines\nof black", 4),
          label({0.1, 0.945}, "White on the desk", 3),
          label({0.5, 0.945}, "Yellow on the desk", 1),
          mark(Kind::crop, {0.02, 0.02}, {0.98, 0.995})};
}

class PictureOfMarks : public EditingFixture {};

TEST_F(PictureOfMarks, IsThereToBeLookedAt) {
  const auto source = screenshot(1440, 900);
  const auto picture = render(source, allMarks());
  ASSERT_EQ(picture.size(), QSize(1384, 878));
  EXPECT_EQ(picture.pixel(200, 110), qRgb(0, 0, 0));
  EXPECT_NE(picture, source.copy(28, 18, 1384, 878));
  QDir(QStringLiteral(NIMBREL_PICTURES)).mkpath(QStringLiteral("."));
  EXPECT_TRUE(picture.save(QStringLiteral(NIMBREL_PICTURES "/marks.png")));
}

}  // namespace
}  // namespace Nimbrel
