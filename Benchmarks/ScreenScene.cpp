#include "ScreenScene.h"

#include "ShotTexts.h"

#include <QFont>
#include <QPainter>
#include <QPolygon>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace Nimbrel::Benchmarks {

namespace {

constexpr QRect editor(60, 50, 700, 560);
constexpr QRect terminal(120, 640, 760, 230);
constexpr QRect film(1050, 620, 320, 200);
constexpr int titleHeight = 28;

QFont typeOf(const char* family, int pixels) {
  QFont font(QString::fromLatin1(family));
  font.setPixelSize(pixels);
  return font;
}

QStringList linesOf(int text) {
  const auto words = QString::fromStdString(shotText(text)).simplified();
  QStringList lines;
  for (qsizetype at = 0; at < words.size(); at += 72) lines.append(words.mid(at, 72));
  return lines;
}

void drawFrame(QPainter& painter, const QRect& window, QColor body, QColor title) {
  painter.fillRect(window.adjusted(-1, -1, 1, 1), QColor(20, 20, 24));
  painter.fillRect(window, body);
  painter.fillRect(QRect(window.topLeft(), QSize(window.width(), titleHeight)), title);
  painter.setPen(Qt::NoPen);
  for (int button = 0; button < 3; ++button) {
    painter.setBrush(QColor::fromHsv(button * 60, 180, 230));
    painter.drawEllipse(window.left() + 10 + button * 20, window.top() + 8, 12, 12);
  }
}

void drawEditor(QPainter& painter, int frame) {
  static const auto text = (linesOf(3) + linesOf(5) + linesOf(8)).join(QLatin1Char('\n'));
  drawFrame(painter, editor, QColor(252, 252, 253), QColor(226, 227, 232));
  painter.setFont(typeOf("DejaVu Sans Mono", 14));
  const auto lines = text.left(1100 + frame * 2).split(QLatin1Char('\n'));
  for (qsizetype line = 0; line < lines.size(); ++line) {
    const int bottom = editor.top() + titleHeight + 22 + static_cast<int>(line) * 19;
    painter.setPen(QColor(150, 154, 166));
    painter.drawText(editor.left() + 10, bottom, QString::number(line + 1));
    painter.setPen(
        QColor::fromHsv(static_cast<int>(line) * 47 % 360, line % 3 == 0 ? 160 : 20, line % 3 == 0 ? 130 : 50));
    painter.drawText(editor.left() + 50, bottom, lines[line]);
  }
}

void drawTerminal(QPainter& painter, int frame) {
  static const auto lines = linesOf(11) + linesOf(14) + linesOf(17) + linesOf(20);
  drawFrame(painter, terminal, QColor(24, 26, 32), QColor(52, 55, 64));
  painter.setFont(typeOf("DejaVu Sans Mono", 13));
  for (int row = 0; row < 11; ++row) {
    painter.setPen(row % 4 == 1 ? QColor(126, 200, 120) : QColor(208, 211, 218));
    painter.drawText(terminal.left() + 12, terminal.top() + titleHeight + 18 + row * 17,
                     lines[(row + frame / 3) % lines.size()]);
  }
}

void drawDragged(QPainter& painter, int frame) {
  const int way = std::clamp(frame - 30, 0, 40);
  const QRect window(800 + way * 6, 90 + way * 4, 300, 220);
  drawFrame(painter, window, QColor(244, 245, 248), QColor(214, 224, 240));
  painter.setFont(typeOf("DejaVu Sans", 15));
  for (int entry = 0; entry < 7; ++entry) {
    const QRect row(window.left() + 12, window.top() + 40 + entry * 25, 276, 22);
    painter.fillRect(row, entry == frame / 20 ? QColor(66, 124, 226) : QColor(255, 255, 255));
    painter.setPen(entry == frame / 20 ? Qt::white : QColor(60, 62, 70));
    painter.drawText(row.adjusted(8, 0, 0, 0), Qt::AlignVCenter,
                     QStringLiteral("Document %1.pdf").arg(entry * 37 + 11));
  }
}

void drawFilm(QPainter& painter, int frame) {
  painter.setPen(Qt::NoPen);
  painter.save();
  painter.setClipRect(film);
  QLinearGradient sky(film.topLeft(), film.bottomLeft());
  sky.setColorAt(0, QColor::fromHsv((200 + frame) % 360, 150, 220));
  sky.setColorAt(1, QColor::fromHsv((30 + frame) % 360, 120, 240));
  painter.fillRect(film, sky);
  for (int cloud = 0; cloud < 9; ++cloud) {
    const QPointF centre(film.left() + (cloud * 71 + frame * (3 + cloud % 3)) % 360 - 20,
                         film.top() + 20 + cloud * 22 + 6 * std::sin(frame * 0.2 + cloud));
    QRadialGradient light(centre, 30 + 6 * cloud);
    light.setColorAt(0, QColor::fromHsv(cloud * 40, 130, 250, 200));
    light.setColorAt(1, Qt::transparent);
    painter.fillRect(film, light);
  }
  painter.restore();
}

void drawPointer(QPainter& painter, int frame) {
  const QPoint tip(700 + static_cast<int>(420 * std::sin(frame * 0.05)),
                   420 + static_cast<int>(260 * std::cos(frame * 0.07)));
  painter.setPen(Qt::white);
  painter.setBrush(Qt::black);
  painter.drawPolygon(QPolygon({tip, tip + QPoint(0, 17), tip + QPoint(4, 13), tip + QPoint(12, 12)}));
}

/// Soft light of several colours, with the finest of grain, as photographs on a desk have it.
QImage drawnWallpaper(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient ground(0, 0, size.width(), size.height());
  ground.setColorAt(0, QColor(38, 62, 110));
  ground.setColorAt(0.5, QColor(120, 84, 140));
  ground.setColorAt(1, QColor(232, 150, 110));
  painter.fillRect(image.rect(), ground);
  QRadialGradient light(QPointF(1000, 200), 600);
  light.setColorAt(0, QColor(255, 236, 200, 140));
  light.setColorAt(1, Qt::transparent);
  painter.fillRect(image.rect(), light);
  return image;
}

}  // namespace

ScreenScene::ScreenScene() : wallpaper_(drawnWallpaper(size)) {}

QImage ScreenScene::frame(int number) const {
  auto image = wallpaper_;
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  drawEditor(painter, number);
  drawTerminal(painter, number);
  drawFilm(painter, number);
  drawDragged(painter, number);
  drawPointer(painter, number);
  return image;
}

}  // namespace Nimbrel::Benchmarks
