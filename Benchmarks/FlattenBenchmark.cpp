// A large screenshot with twenty marks, two blurs among them, burned into a copy: from file to file, beside reading
// that file and writing its picture again with nothing done to it.

#include "Measure.h"

#include "Editing/Flatten.h"
#include "Platform/ImageFile.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <random>

namespace Nimbrel::Benchmarks {
namespace {

constexpr QSize pictureSize(2880, 1800);
constexpr int rounds = 21;
constexpr double target = 2;

using Kind = Annotation::Kind;
using Random = std::mt19937;

int upTo(Random& random, int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

QString words(Random& random) {
  QString text;
  for (int word = 0; word < 14; ++word) {
    for (int letters = 2 + upTo(random, 9); letters > 0; --letters) text += QChar(u'a' + upTo(random, 26));
    text += QLatin1Char(' ');
  }
  return text;
}

void drawWindow(QPainter& painter, const QRect& frame, const QColor& paper, const QColor& ink, Random& random) {
  painter.fillRect(frame, paper);
  painter.fillRect(QRect(frame.topLeft(), QSize(frame.width(), 56)), paper.darker(115));
  painter.setPen(ink);
  for (int y = frame.top() + 84; y + 36 < frame.bottom(); y += 36) {
    painter.drawText(QRect(frame.left() + 40, y, frame.width() - 60, 36), Qt::TextSingleLine, words(random));
  }
}

/// Two windows full of text on a desk.
QImage screenshot() {
  Random random(1);
  QImage image(pictureSize, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient desk(0, 0, 0, pictureSize.height());
  desk.setColorAt(0, QColor(60, 90, 160));
  desk.setColorAt(1, QColor(150, 90, 130));
  painter.fillRect(image.rect(), desk);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(26);
  painter.setFont(font);
  drawWindow(painter, QRect(100, 100, 1700, 1300), Qt::white, QColor(40, 40, 48), random);
  drawWindow(painter, QRect(1300, 500, 1400, 1200), QColor(30, 31, 34), QColor(200, 220, 210), random);
  return image;
}

Annotation mark(Kind kind, QPointF start, QSizeF size) {
  return {.id = QUuid::createUuid(),
          .kind = kind,
          .start = start,
          .end = start + QPointF(size.width(), size.height()),
          .colorIndex = static_cast<int>(start.x() * 5),
          .number = 7,
          .text = "What is this?"};
}

/// Two blurs, three of each other kind that draws.
std::vector<Annotation> marks() {
  std::vector<Annotation> list{mark(Kind::blur, {0.06, 0.2}, {0.25, 0.12}), mark(Kind::blur, {0.6, 0.6}, {0.2, 0.2})};
  for (const auto kind : {Kind::redact, Kind::box, Kind::arrow, Kind::highlight, Kind::step, Kind::label}) {
    const double y = 0.1 + 0.1 * static_cast<int>(kind);
    for (const double x : {0.1, 0.4, 0.7}) list.push_back(mark(kind, {x, y}, {0.15, 0.06}));
  }
  return list;
}

void write(const QImage& picture, const std::string& path) {
  if (ImageFile::writePNG(picture, path)) std::exit(2);
  QFile::remove(QFile::decodeName(path.c_str()));
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  using namespace Nimbrel::Benchmarks;
  namespace ImageFile = Nimbrel::ImageFile;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QTemporaryDir folder;
  const auto source = folder.filePath(QStringLiteral("source.png")).toStdString();
  const auto copy = folder.filePath(QStringLiteral("copy.png")).toStdString();
  if (ImageFile::writePNG(screenshot(), source)) return 2;
  const auto list = marks();
  std::printf("%d x %d pixels, %zu marks\n", pictureSize.width(), pictureSize.height(), list.size());
  return printTable(
      {compareCpu(
          "a marked copy, beside a copy", target, rounds, [&] { write(Nimbrel::Flatten::render(source, list), copy); },
          [&] { write(ImageFile::picture(source), copy); })},
      "seconds of CPU");
}
