#include "RecognitionCorpus.h"

namespace Nimbrel::Benchmarks {

namespace {

const QStringList buttons{QStringLiteral("Cancel"), QStringLiteral("OK"),   QStringLiteral("Apply"),
                          QStringLiteral("Delete"), QStringLiteral("Save"), QStringLiteral("Don't Save"),
                          QStringLiteral("Retry"),  QStringLiteral("Help")};

QColor accent(Wording& wording) { return QColor::fromHsv(wording.upTo(360), 190, 160); }

void menuBar(Canvas& canvas) {
  canvas.box({0, 0, canvas.size().width() * 1.0, 28}, canvas.panel());
  double x = 12;
  for (const auto* name : {"File", "Edit", "View", "Insert", "Tools", "Window", "Help"}) {
    x = canvas.text(x, 19, QString::fromLatin1(name), canvas.type(-1)) + 18;
  }
}

void editor(Canvas& canvas, Wording& wording) {
  menuBar(canvas);
  canvas.box({0, 28, 170, canvas.size().height() - 28.0}, canvas.panel());
  for (int i = 0; i < 18; ++i) canvas.text(14 + (i % 4 == 0 ? 0 : 14), 54 + 24 * i, wording.file(), canvas.type(-1));
  const double step = canvas.look().pixels * 1.45;
  auto number = canvas.fixed();
  number.colour = canvas.faint();
  int line = 1;
  for (double y = 56; y < canvas.size().height() - 34; y += step, ++line) {
    canvas.textRight(206, y, QString::number(line), number);
    if (wording.oneIn(6)) continue;
    auto type = canvas.fixed();
    const double indent = canvas.widthOf(QStringLiteral("  "), type) * wording.upTo(4);
    // Each token in a colour of its own, as highlighting does.
    double x = 220 + indent;
    QStringList part;
    const auto words = wording.codeLine().split(u' ');
    const bool comment = words.first() == u"//";
    for (int i = 0; i < words.size(); ++i) {
      const int hue = (comment ? 110 : 40 * (i * i % 9) + 200) % 360;
      type.colour = canvas.look().dark ? QColor::fromHsv(hue, comment ? 70 : 110, comment ? 150 : 235)
                                       : QColor::fromHsv(hue, 220, comment ? 120 : 140);
      canvas.text(x, y, words[i], type);
      x += canvas.widthOf(words[i] + u' ', type);
    }
  }
  canvas.box({0, canvas.size().height() - 24.0, canvas.size().width() * 1.0, 24}, QColor(0, 110, 180));
  auto status = canvas.type(-2);
  status.colour = Qt::white;
  canvas.text(10, canvas.size().height() - 8.0, QStringLiteral("main  Ln 42, Col 17  UTF-8  C++"), status);
}

void terminal(Canvas& canvas, Wording& wording) {
  const bool dark = !canvas.look().dark || canvas.look().seed % 3 != 0;
  canvas.box({0, 0, canvas.size().width() * 1.0, canvas.size().height() * 1.0},
             dark ? QColor(16, 18, 22) : canvas.paper());
  const double step = canvas.look().pixels * 1.3;
  for (double y = 24; y < canvas.size().height() - 8; y += step) {
    auto type = canvas.fixed();
    const auto line = wording.shellLine();
    type.colour = dark ? QColor(205, 210, 205) : canvas.ink();
    if (line.startsWith(u"error")) type.colour = QColor(240, 90, 80);
    if (line.startsWith(u'$')) type.colour = dark ? QColor(110, 220, 120) : QColor(20, 120, 40);
    canvas.text(10, y, line, type);
  }
}

void chat(Canvas& canvas, Wording& wording) {
  canvas.box({0, 0, 200, canvas.size().height() * 1.0}, canvas.panel());
  for (int i = 0; i < 12; ++i) {
    canvas.disc(28, 30 + 50 * i, 16, accent(wording));
    canvas.text(54, 35 + 50 * i, wording.person(), canvas.type());
  }
  double y = 24;
  for (int i = 0; y < canvas.size().height() - 60; ++i) {
    const bool mine = wording.oneIn(2);
    auto type = canvas.type();
    const QColor fill = mine ? QColor(20, 110, 230) : canvas.panel();
    if (mine) type.colour = Qt::white;
    const int lines = 1 + wording.upTo(3);
    const double step = type.pixels * 1.45;
    const double left = mine ? 460 : 220;
    canvas.box({left, y, 410, lines * step + 18}, fill, Qt::transparent, 12);
    for (int line = 0; line < lines; ++line) {
      auto text = wording.sentence(4 + wording.upTo(5));
      while (canvas.widthOf(text, type) > 385) text = text.left(text.lastIndexOf(u' '));
      canvas.text(left + 12, y + step * (line + 1), text, type);
    }
    auto small = canvas.type(-3);
    small.colour = canvas.faint();
    y += lines * step + 34;
    canvas.text(left + 12, y, wording.time(), small);
    y += 12;
  }
}

void dialog(Canvas& canvas, Wording& wording) {
  canvas.box({0, 0, canvas.size().width() * 1.0, canvas.size().height() * 1.0},
             QColor::fromHsv(wording.upTo(360), 90, 120));
  for (int i = 0; i < 4; ++i) {
    const double x = 40 + (i % 2) * 430;
    const double y = 36 + (i / 2) * 300;
    canvas.box({x, y, 390, 260}, canvas.paper(), canvas.edge(), 10);
    canvas.box({x + 1, y + 1, 388, 32}, canvas.panel(), Qt::transparent, 9);
    auto bold = canvas.type();
    bold.bold = true;
    canvas.textCentred(x + 195, y + 22, wording.title(3), bold);
    for (int line = 0; line < 3; ++line) {
      auto text = wording.sentence(7);
      while (canvas.widthOf(text, canvas.type()) > 350) text = text.left(text.lastIndexOf(u' '));
      canvas.text(x + 20, y + 66 + line * canvas.look().pixels * 1.5, text, canvas.type());
    }
    canvas.box({x + 20, y + 140, 350, 30}, canvas.paper(), canvas.edge(), 4);
    canvas.text(x + 28, y + 160, wording.file(), canvas.type());
    for (int button = 0; button < 3; ++button) {
      const QRectF place(x + 126 + button * 84, y + 204, 78, 30);
      auto type = canvas.type(-1);
      if (button == 2) type.colour = Qt::white;
      canvas.box(place, button == 2 ? accent(wording) : canvas.panel(), canvas.edge(), 5);
      canvas.textCentred(place.center().x(), place.center().y() + 5, wording.anyOf(buttons), type);
    }
  }
}

void settings(Canvas& canvas, Wording& wording) {
  canvas.box({0, 0, 210, canvas.size().height() * 1.0}, canvas.panel());
  for (int i = 0; i < 13; ++i) {
    const double y = 24 + 44 * i;
    if (i == 4) canvas.box({8, y - 8, 194, 36}, accent(wording), Qt::transparent, 6);
    auto type = canvas.type();
    if (i == 4) type.colour = Qt::white;
    canvas.box({20, y, 20, 20}, QColor::fromHsv(wording.upTo(360), 150, 210), Qt::transparent, 5);
    canvas.text(50, y + 15, wording.title(2), type);
  }
  auto heading = canvas.type(8);
  heading.bold = true;
  canvas.text(240, 46, wording.title(2), heading);
  for (int i = 0; i < 9; ++i) {
    const double y = 74 + 60 * i;
    canvas.box({240, y, 630, 50}, canvas.panel(), canvas.edge(), 6);
    canvas.text(256, y + 22, wording.title(3), canvas.type());
    auto small = canvas.type(-2);
    small.colour = canvas.faint();
    canvas.text(256, y + 40, wording.sentence(7), small);
    if (i % 3 == 0) {
      canvas.box({800, y + 14, 44, 22}, accent(wording), Qt::transparent, 11);
      canvas.disc(833, y + 25, 9, Qt::white);
    } else {
      canvas.box({730, y + 10, 124, 30}, canvas.paper(), canvas.edge(), 5);
      canvas.text(740, y + 30, wording.title(1), canvas.type(-1));
    }
  }
}

void files(Canvas& canvas, Wording& wording) {
  menuBar(canvas);
  canvas.text(14, 52, wording.path(), canvas.type());
  auto head = canvas.type(-1);
  head.colour = canvas.faint();
  canvas.text(40, 84, QStringLiteral("Name"), head);
  canvas.text(430, 84, QStringLiteral("Size"), head);
  canvas.text(560, 84, QStringLiteral("Kind"), head);
  canvas.text(720, 84, QStringLiteral("Modified"), head);
  const double step = canvas.look().pixels * 1.8;
  int row = 0;
  for (double y = 112; y < canvas.size().height() - 12; y += step, ++row) {
    auto type = canvas.type();
    if (row % 2 == 0) canvas.box({0, y - step * 0.7, canvas.size().width() * 1.0, step}, canvas.panel());
    if (row == 3) {
      canvas.box({0, y - step * 0.7, canvas.size().width() * 1.0, step}, QColor(30, 100, 210));
      type.colour = Qt::white;
    }
    canvas.box({14, y - 11, 14, 14}, QColor::fromHsv(wording.upTo(360), 120, 210), Qt::transparent, 2);
    canvas.text(40, y, wording.file(), type);
    canvas.text(
        430, y,
        QString::number(1 + wording.upTo(900)) + (wording.oneIn(2) ? QStringLiteral(" KB") : QStringLiteral(" MB")),
        type);
    canvas.text(560, y, wording.title(2), type);
    canvas.text(720, y, wording.date() + u' ' + wording.time(), type);
  }
}

void dashboard(Canvas& canvas, Wording& wording) {
  canvas.box({0, 0, canvas.size().width() * 1.0, canvas.size().height() * 1.0}, canvas.panel());
  for (int i = 0; i < 4; ++i) {
    const double x = 20 + i * 218;
    canvas.box({x, 20, 204, 110}, canvas.paper(), canvas.edge(), 10);
    auto small = canvas.type(-1);
    small.colour = canvas.faint();
    canvas.text(x + 16, 48, wording.title(2), small);
    auto large = canvas.type(16);
    large.bold = true;
    canvas.text(x + 16, 90, wording.number(), large);
    auto change = canvas.type(-2);
    change.colour = i % 2 == 0 ? QColor(30, 150, 80) : QColor(210, 60, 50);
    canvas.text(x + 16, 116,
                (i % 2 == 0 ? QStringLiteral("+") : QStringLiteral("-")) + wording.number() +
                    QStringLiteral(" since ") + wording.date(),
                change);
  }
  canvas.box({20, 150, 560, 240}, canvas.paper(), canvas.edge(), 10);
  for (int i = 0; i < 12; ++i) {
    const double height = 30 + wording.upTo(120);
    canvas.box({70.0 + 42 * i, 356 - height, 24, height}, QColor(70, 130, 220), Qt::transparent, 3);
    auto small = canvas.type(-3);
    small.colour = canvas.faint();
    canvas.textCentred(82 + 42 * i, 374, QString::number(i + 1), small);
  }
  canvas.text(40, 178, wording.title(3), canvas.type(2));
  canvas.box({600, 150, 280, 240}, canvas.paper(), canvas.edge(), 10);
  for (int i = 0; i < 7; ++i) {
    canvas.text(616, 180 + 30 * i, wording.title(2), canvas.type());
    canvas.textRight(864, 180 + 30 * i, wording.number(), canvas.type());
  }
  canvas.box({20, 410, 860, 212}, canvas.paper(), canvas.edge(), 10);
  for (int i = 0; i < 6; ++i) {
    const double y = 440 + 31 * i;
    canvas.text(40, y, wording.person(), canvas.type());
    canvas.text(250, y, wording.email(), canvas.type());
    auto tag = canvas.type(-2);
    tag.colour = Qt::white;
    const bool open = wording.oneIn(2);
    canvas.pill({540, y - 15, 84, 22}, open ? QStringLiteral("Open") : QStringLiteral("Closed"),
                open ? QColor(40, 140, 80) : QColor(150, 60, 140), tag, 11);
    canvas.text(660, y, wording.date(), canvas.type());
    canvas.textRight(860, y, wording.price(), canvas.type());
  }
}

void board(Canvas& canvas, Wording& wording) {
  canvas.box({0, 0, canvas.size().width() * 1.0, canvas.size().height() * 1.0}, QColor(36, 88, 130));
  for (int column = 0; column < 4; ++column) {
    const double x = 16 + column * 220;
    canvas.box({x, 20, 206, 600}, canvas.panel(), Qt::transparent, 8);
    auto head = canvas.type();
    head.bold = true;
    canvas.text(x + 14, 46, wording.title(2), head);
    for (int card = 0; card < 5; ++card) {
      const double y = 62 + 110 * card;
      canvas.box({x + 8, y, 190, 98}, canvas.paper(), canvas.edge(), 6);
      auto tag = canvas.type(-3);
      tag.colour = Qt::white;
      canvas.pill({x + 18, y + 10, 62, 16}, wording.title(1), accent(wording), tag, 8);
      for (int line = 0; line < 2; ++line) {
        canvas.text(x + 18, y + 46 + line * 18, wording.title(2), canvas.type(-1));
      }
      auto small = canvas.type(-3);
      small.colour = canvas.faint();
      canvas.text(x + 18, y + 88,
                  QStringLiteral("#") + QString::number(100 + wording.upTo(900)) + QStringLiteral(" ") + wording.date(),
                  small);
    }
  }
}

void keys(Canvas& canvas, Wording& wording) {
  menuBar(canvas);
  for (int i = 0; i < 16; ++i) {
    const double y = 64 + 36 * i;
    canvas.text(30, y, wording.identifier(), canvas.fixed());
    canvas.text(300, y, wording.key(), canvas.fixed());
    canvas.text(560, y, wording.address(), canvas.type());
    canvas.rule(20, y + 12, 880, y + 13, canvas.edge());
  }
}

}  // namespace

std::vector<NamedLayout> windowLayouts() {
  return {{"editor", editor}, {"terminal", terminal},   {"chat", chat},   {"dialog", dialog}, {"settings", settings},
          {"files", files},   {"dashboard", dashboard}, {"board", board}, {"keys", keys}};
}

}  // namespace Nimbrel::Benchmarks
