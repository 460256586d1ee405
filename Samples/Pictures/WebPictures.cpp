#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"
#include "Samples/QrCode.h"
#include "Samples/Words.h"

#include <QLinearGradient>
#include <QPolygonF>

#include <array>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

constexpr QStringView opening =
    u"For forty years the tide mill below Dunmere stood still. Its gate had rusted shut, the pond behind it had silted "
    u"up, "
    u"and swallows nested where the miller used to keep his ledgers. This spring the wheel turned again, and with it "
    u"came "
    u"back a small piece of knowledge that nobody alive had ever used.";

constexpr QStringView middle =
    u"A tide mill works twice a day. When the sea rises, it pushes a gate open and fills the pond; when it falls, the "
    u"gate "
    u"closes and the water has only one way out, over the wheel. That leaves about five hours of grinding for each "
    u"tide, at "
    u"times that move by fifty minutes from one day to the next. Millers slept when the moon allowed it.";

constexpr QStringView ending =
    u"The restorers began with a survey in 2019 and found that 61 of the 72 oak paddles were sound. The others were "
    u"cut from "
    u"a single tree, felled two valleys away and seasoned for three winters. The stones came from a farmyard, where "
    u"they "
    u"had served as steps. In all, the work cost $412,000, a third of it raised by the village.";

void drawWheel(Canvas& canvas, QPointF hub, qreal radius) {
  constexpr int paddles = 12;
  const QColor wood(0x3d2f27);
  canvas.painter().setBrush(Qt::NoBrush);
  canvas.painter().setPen(QPen(wood, 4));
  canvas.painter().drawEllipse(hub, radius, radius);
  for (int paddle = 0; paddle < paddles; ++paddle) {
    const auto angle = 2 * std::numbers::pi * paddle / paddles;
    canvas.line(hub, hub + QPointF(std::cos(angle), std::sin(angle)) * (radius + 6), wood, 2.5);
  }
}

void drawPhoto(Canvas& canvas, const QRectF& box) {
  QLinearGradient scene(box.topLeft(), box.bottomLeft());
  scene.setColorAt(0, QColor(0xbfd6e2));
  scene.setColorAt(0.58, QColor(0xe8dcc6));
  scene.setColorAt(0.59, QColor(0x5f8796));
  scene.setColorAt(1, QColor(0x2f5363));
  canvas.fill(box, scene);
  const auto shore = std::round(box.top() + box.height() * 0.62);
  const QRectF house(box.left() + box.width() * 0.56, shore - 62, 150, 66);
  canvas.fill({house.left() - 30, shore, box.right() - house.left() + 30, 10}, QColor(0x6f6a58));
  canvas.fill(house, QColor(0x8b6a52));
  const QPolygonF roof({{house.left() - 12, house.top()},
                        {house.left() + 18, house.top() - 44},
                        {house.right() - 18, house.top() - 44},
                        {house.right() + 12, house.top()}});
  canvas.painter().setPen(Qt::NoPen);
  canvas.painter().setBrush(QColor(0x54423a));
  canvas.painter().drawPolygon(roof);
  for (int pane = 0; pane < 3; ++pane) {
    canvas.fill({house.left() + 22 + pane * 44, house.top() + 18, 18, 22}, QColor(0xf0dca8));
  }
  drawWheel(canvas, {house.left() - 14, shore + 4}, 34);
}

}  // namespace

void drawArticle(Canvas& canvas, const Occasion& occasion) {
  const auto& theme = lightTheme();
  const auto screen = desktop(canvas, u"Browser", occasion.taken);
  const auto frame = window(canvas, screen, u"The mill that waited for the moon", theme);
  const auto page = browser(canvas, frame, u"The mill that waited for the moon",
                            u"harbor-review.example.org/stories/tide-mill", theme);
  const TextStyle text{.size = 16, .color = QColor(0x24262a), .face = Face::serif};
  QRectF column(page.center().x() - 360, page.top() + 26, 720, 40);
  canvas.textIn({column.left(), column.top(), column.width(), 20},
                u"HARBOR REVIEW   Places   Crafts   Weather   Archive", {.size = 12, .color = theme.muted});
  canvas.textIn(column.translated(0, 28), u"The mill that waited for the moon",
                {.size = 30, .color = text.color, .face = Face::serif, .weight = Weight::bold});
  canvas.textIn(column.translated(0, 64), u"By Tomas Reyl, "_s + words(occasion.taken.addDays(-2), u"MMMM d, yyyy"),
                {.size = 13, .color = theme.muted});
  const QRectF photo(column.left(), column.top() + 112, column.width(), 210);
  drawPhoto(canvas, photo);
  canvas.textIn({photo.left(), photo.bottom() + 4, photo.width(), 22}, u"The mill at half tide, seen from the sluice.",
                {.size = 12, .color = theme.muted});
  QRectF body(column.left(), photo.bottom() + 38, column.width(), 400);
  for (const auto part : {opening, middle, ending}) {
    body.moveTop(canvas.paragraph(body, part, text, 27) + 13);
  }
  scrollBar(canvas, {page.right() - 14, page.top(), 14, page.height()}, 0.01, 0.38, theme);
}

void drawTicketPage(Canvas& canvas, const Occasion& occasion) {
  const auto& theme = lightTheme();
  const auto frame = window(canvas, canvas.bounds(), u"Your ticket", theme);
  const auto page = browser(canvas, frame, u"Your ticket", u"tickets.example.com/orders/KX-20931", theme);
  canvas.fill(page, QColor(0xeef1f5));
  const auto card = page.adjusted(70, 36, -70, -36);
  canvas.panel(card, 12, theme.page, theme.line);
  canvas.fill({card.left() + 1, card.top() + 64, card.width() - 2, 4}, theme.accent);
  canvas.textIn({card.left() + 32, card.top() + 14, card.width() - 64, 40}, u"Lantern Night at the Old Mill",
                {.size = 22, .color = theme.text, .weight = Weight::bold});
  const auto evening = occasion.taken.addDays(16);
  const std::array<std::array<QString, 2>, 5> facts{{{u"Date"_s, words(evening, u"dddd, MMMM d, yyyy")},
                                                     {u"Doors"_s, u"6:30 PM, begins at 7:15 PM"_s},
                                                     {u"Place"_s, u"3 Sluice Road, Dunmere, OR 97999"_s},
                                                     {u"Seat"_s, u"Row F, seat 14"_s},
                                                     {u"Order"_s, u"KX-20931, $24.00"_s}}};
  QRectF row(card.left() + 32, card.top() + 96, 380, 22);
  for (const auto& [name, value] : facts) {
    canvas.textIn(row, name, {.size = 12, .color = theme.muted});
    canvas.textIn(row.translated(0, 22), value, {.size = 15, .color = theme.text});
    row.translate(0, 62);
  }
  const QRectF code(card.right() - 302, card.top() + 100, 262, 262);
  drawQrCode(canvas, code, u"https://example.com/tickets/KX-20931?seat=F14");
  canvas.textIn({code.left(), code.bottom() - 4, code.width(), 22}, u"Show this code at the door",
                {.size = 13, .color = theme.text}, Qt::AlignCenter);
  button(canvas, {card.right() - 300, card.bottom() - 62, 122, 34}, u"Print ticket", ButtonKind::plain, theme);
  button(canvas, {card.right() - 166, card.bottom() - 62, 122, 34}, u"Add to calendar", ButtonKind::primary, theme);
}

}  // namespace Nimbrel::Samples
