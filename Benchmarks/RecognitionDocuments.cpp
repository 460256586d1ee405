#include "RecognitionCorpus.h"

#include <algorithm>

namespace Nimbrel::Benchmarks {

namespace {

/// Words until the width is full, line after line.
double paragraph(Canvas& canvas, Wording& wording, const QRectF& place, int lines, const Canvas::Type& type) {
  double y = place.top();
  QStringList words;
  for (int i = 0; i < lines; ++i) {
    QString line;
    while (true) {
      if (words.isEmpty()) words = wording.sentence(8 + wording.upTo(10)).split(u' ');
      const auto longer = line.isEmpty() ? words.first() : line + u' ' + words.first();
      if (canvas.widthOf(longer, type) > place.width()) break;
      line = longer;
      words.removeFirst();
    }
    canvas.text(place.left(), y, line, type);
    y += type.pixels * 1.5;
    if (y > place.bottom()) break;
  }
  return y;
}

void article(Canvas& canvas, Wording& wording) {
  const double width = canvas.size().width();
  auto heading = canvas.type(14);
  heading.bold = true;
  canvas.text(60, 60, wording.title(4), heading);
  auto byline = canvas.type(-2);
  byline.colour = canvas.faint();
  canvas.text(60, 86, wording.person() + QStringLiteral(" · ") + wording.date() + QStringLiteral(" · 5 min"), byline);
  double y = 120;
  while (y < canvas.size().height() - 60) {
    y = paragraph(canvas, wording, {60, y, width * 0.55, 500}, 5, canvas.type()) + 14;
    if (y > canvas.size().height() - 110) break;
    auto small = canvas.type(3);
    small.bold = true;
    canvas.text(60, y + 6, wording.title(3), small);
    y += 34;
  }
  auto link = canvas.type(-1);
  link.colour = canvas.look().dark ? QColor(120, 170, 255) : QColor(20, 90, 200);
  for (int i = 0; i < 9; ++i) canvas.text(width * 0.55 + 130, 130 + 30 * i, wording.title(3), link);
}

void columns(Canvas& canvas, Wording& wording) {
  const double width = (canvas.size().width() - 120) / 2.0;
  auto type = canvas.type();
  for (int column = 0; column < 2; ++column) {
    const double left = 40 + column * (width + 40);
    auto heading = canvas.type(6);
    heading.bold = true;
    canvas.text(left, 50, wording.title(2), heading);
    double y = 84;
    while (y < canvas.size().height() - 40) y = paragraph(canvas, wording, {left, y, width, 520}, 6, type) + 12;
  }
}

void mail(Canvas& canvas, Wording& wording) {
  const double height = canvas.size().height();
  canvas.box({0, 0, 260, height}, canvas.panel());
  for (int i = 0; i < 10; ++i) {
    const double y = 20 + i * 62;
    if (i == 2) canvas.box({0, y - 14, 260, 60}, QColor(40, 105, 205));
    auto name = canvas.type();
    name.bold = true;
    auto below = canvas.type(-2);
    below.colour = canvas.faint();
    if (i == 2) name.colour = below.colour = Qt::white;
    canvas.text(16, y + 6, wording.person(), name);
    canvas.textRight(248, y + 6, wording.time(), below);
    canvas.text(16, y + 26, wording.title(4), below);
    canvas.rule(16, y + 44, 244, y + 45, canvas.edge());
  }
  auto subject = canvas.type(6);
  subject.bold = true;
  canvas.text(290, 44, wording.title(4), subject);
  canvas.text(290, 74, QStringLiteral("From: ") + wording.person() + QStringLiteral(" <") + wording.email() + u'>',
              canvas.type(-1));
  canvas.text(290, 96, QStringLiteral("To: ") + wording.email() + QStringLiteral(", ") + wording.email(),
              canvas.type(-1));
  canvas.rule(290, 110, canvas.size().width() - 20.0, 111, canvas.edge());
  double y = 140;
  canvas.text(290, y, QStringLiteral("Hello ") + wording.person() + u',', canvas.type());
  y += 30;
  for (int i = 0; i < 4; ++i) y = paragraph(canvas, wording, {290, y, 580, 460}, 4, canvas.type()) + 12;
  canvas.text(290, y, wording.address(), canvas.type());
}

void invoice(Canvas& canvas, Wording& wording) {
  const double right = canvas.size().width() - 60;
  auto heading = canvas.type(12);
  heading.bold = true;
  canvas.text(60, 64, QStringLiteral("INVOICE"), heading);
  canvas.textRight(right, 50, wording.company(), canvas.type());
  canvas.textRight(right, 70, wording.email(), canvas.type(-1));
  canvas.text(60, 100, QStringLiteral("Invoice no. ") + wording.number() + QStringLiteral(" dated ") + wording.date(),
              canvas.type());
  canvas.text(60, 122, QStringLiteral("Customer: ") + wording.person() + QStringLiteral(", ") + wording.company(),
              canvas.type());
  canvas.box({60, 150, right - 60, 28}, canvas.panel());
  auto head = canvas.type();
  head.bold = true;
  canvas.text(70, 169, QStringLiteral("Description"), head);
  canvas.textRight(right - 260, 169, QStringLiteral("Qty"), head);
  canvas.textRight(right - 120, 169, QStringLiteral("Unit price"), head);
  canvas.textRight(right - 10, 169, QStringLiteral("Amount"), head);
  double y = 200;
  for (int i = 0; i < 11; ++i, y += 28) {
    canvas.text(70, y, wording.title(2 + wording.upTo(3)), canvas.type());
    canvas.textRight(right - 260, y, QString::number(1 + wording.upTo(40)), canvas.type());
    canvas.textRight(right - 120, y, wording.price(), canvas.type());
    canvas.textRight(right - 10, y, wording.price(), canvas.type());
    canvas.rule(60, y + 9, right, y + 10, canvas.edge());
  }
  canvas.textRight(right - 120, y + 14, QStringLiteral("Subtotal"), canvas.type());
  canvas.textRight(right - 10, y + 14, wording.price(), canvas.type());
  canvas.textRight(right - 120, y + 40, QStringLiteral("Total due"), head);
  canvas.textRight(right - 10, y + 40, wording.price(), head);
  canvas.text(60, y + 74, QStringLiteral("IBAN DE44 5001 0517 5407 3249 31, reference ") + wording.key(),
              canvas.type(-2));
}

void receipt(Canvas& canvas, Wording& wording) {
  const double left = 260;
  const double right = 640;
  canvas.box({left - 30, 10, right - left + 60, 620}, QColor(252, 251, 246), canvas.edge(), 4);
  auto type = canvas.fixed();
  type.colour = QColor(40, 40, 40);
  canvas.textCentred((left + right) / 2, 44, wording.company().toUpper(), type);
  canvas.textCentred((left + right) / 2, 66, wording.title(2) + u' ' + QString::number(wording.upTo(200)), type);
  canvas.textCentred((left + right) / 2, 88, wording.date() + u' ' + wording.time(), type);
  double y = 126;
  for (int i = 0; i < 16; ++i, y += 24) {
    canvas.text(left, y, QString::number(1 + wording.upTo(9)) + QStringLiteral(" x ") + wording.title(2), type);
    canvas.textRight(right, y, wording.price(), type);
  }
  type.bold = true;
  canvas.text(left, y + 16, QStringLiteral("TOTAL"), type);
  canvas.textRight(right, y + 16, wording.price(), type);
  type.bold = false;
  canvas.textCentred((left + right) / 2, y + 54, QStringLiteral("Thank you for your visit!"), type);
}

void sheet(Canvas& canvas, Wording& wording) {
  const double width = 92;
  const double height = 24;
  canvas.box({0, 0, canvas.size().width() * 1.0, height}, canvas.panel());
  canvas.box({0, 0, 40, canvas.size().height() * 1.0}, canvas.panel());
  auto type = canvas.type(-1);
  auto head = type;
  head.colour = canvas.faint();
  for (int row = 0; (row + 1) * height < canvas.size().height(); ++row) {
    const double y = row * height;
    canvas.rule(0, y, canvas.size().width(), y + 1, canvas.edge());
    if (row > 0) canvas.textCentred(20, y + 17, QString::number(row), head);
    for (int column = 0; 40 + column * width < canvas.size().width() - 40; ++column) {
      const double x = 40 + column * width;
      if (row == 0) {
        canvas.textCentred(x + width / 2, y + 17, QString(QChar(u'A' + column)), head);
      } else if (column == 0) {
        canvas.text(x + 5, y + 17, wording.word(), type);
      } else if (!wording.oneIn(5)) {
        canvas.textRight(x + width - 5, y + 17, wording.oneIn(4) ? wording.price() : wording.number(), type);
      }
    }
  }
  for (double x = 40; x < canvas.size().width(); x += width)
    canvas.rule(x, 0, x + 1, canvas.size().height(), canvas.edge());
}

void shop(Canvas& canvas, Wording& wording) {
  canvas.box({0, 0, canvas.size().width() * 1.0, 52}, QColor(24, 60, 90));
  auto bar = canvas.type();
  bar.colour = Qt::white;
  for (int i = 0; i < 6; ++i) canvas.text(30 + 120 * i, 32, wording.title(1), bar);
  for (int i = 0; i < 8; ++i) {
    const double x = 24 + (i % 4) * 218;
    const double y = 72 + (i / 4) * 286;
    canvas.box({x, y, 204, 270}, canvas.panel(), canvas.edge(), 8);
    canvas.box({x + 12, y + 12, 180, 110}, QColor::fromHsv(wording.upTo(360), 90, 200), Qt::transparent, 6);
    canvas.disc(x + 60 + wording.upTo(80), y + 66, 34, QColor::fromHsv(wording.upTo(360), 120, 160));
    auto name = canvas.type(1);
    name.bold = true;
    canvas.text(x + 14, y + 146, wording.title(2), name);
    auto small = canvas.type(-2);
    small.colour = canvas.faint();
    canvas.text(x + 14, y + 168, wording.title(3), small);
    canvas.text(x + 14, y + 194, wording.price(), canvas.type(2));
    auto button = canvas.type(-1);
    button.colour = Qt::white;
    button.bold = true;
    canvas.pill({x + 14, y + 214, 110, 34},
                wording.oneIn(2) ? QStringLiteral("Add to cart") : QStringLiteral("Buy now"),
                i % 2 == 0 ? QColor(220, 90, 30) : QColor(30, 130, 80), button, 6);
    auto tag = canvas.type(-3);
    tag.colour = Qt::white;
    if (wording.oneIn(2)) canvas.pill({x + 140, y + 20, 46, 18}, QStringLiteral("SALE"), QColor(190, 30, 60), tag, 9);
  }
}

void ticket(Canvas& canvas, Wording& wording) {
  for (int i = 0; i < 2; ++i) {
    const double y = 30 + 300 * i;
    canvas.box({80, y, 740, 260}, i == 0 ? QColor(255, 244, 214) : QColor(35, 52, 96), canvas.edge(), 14);
    const QColor ink = i == 0 ? QColor(60, 40, 20) : QColor(235, 240, 255);
    auto small = canvas.type(-2);
    small.colour = i == 0 ? QColor(130, 105, 70) : QColor(160, 178, 220);
    auto large = canvas.type(10);
    large.colour = ink;
    large.bold = true;
    auto type = canvas.type(2);
    type.colour = ink;
    canvas.text(110, y + 44, wording.title(3), large);
    for (int field = 0; field < 6; ++field) {
      const double x = 110 + (field % 3) * 190;
      const double top = y + 84 + (field / 3) * 64;
      static const QStringList labels{QStringLiteral("PASSENGER"), QStringLiteral("DATE"), QStringLiteral("GATE"),
                                      QStringLiteral("DEPARTS"),   QStringLiteral("SEAT"), QStringLiteral("BOOKING")};
      canvas.text(x, top, labels[field], small);
      const QStringList values{wording.person(),
                               wording.date(),
                               QStringLiteral("B") + QString::number(10 + wording.upTo(60)),
                               wording.time(),
                               QString::number(10 + wording.upTo(30)) + u'C',
                               wording.key().left(9)};
      canvas.text(x, top + 24, values[field], type);
    }
    for (double dash = y + 8; dash < y + 250; dash += 10) canvas.rule(690, dash, 691, dash + 5, canvas.edge());
    canvas.text(110, y + 230, wording.sentence(8), small);
  }
}

}  // namespace

std::vector<NamedLayout> documentLayouts() {
  return {{"article", article}, {"columns", columns}, {"mail", mail}, {"invoice", invoice},
          {"receipt", receipt}, {"sheet", sheet},     {"shop", shop}, {"ticket", ticket}};
}

}  // namespace Nimbrel::Benchmarks
