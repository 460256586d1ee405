#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"
#include "Samples/Words.h"

#include <array>
#include <cmath>
#include <span>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

struct Figure {
  QStringView name;
  QStringView value;
  QStringView change;
  bool better;
};

constexpr std::array<Figure, 4> figures{{{u"Orders", u"1,284", u"+6.2% on last month", true},
                                         {u"Revenue", u"$38,412", u"+3.9% on last month", true},
                                         {u"Returns", u"27", u"+4 on last month", false},
                                         {u"Average basket", u"$29.92", u"-2.1% on last month", false}}};

constexpr std::array<int, 12> thousands{21, 24, 29, 27, 31, 30, 26, 28, 33, 36, 37, 38};

using TableRow = std::array<QStringView, 3>;

constexpr std::array<TableRow, 6> products{{{u"Notebook, cream, A5", u"312", u"$4,368"},
                                            {u"Tide table poster", u"204", u"$5,712"},
                                            {u"Wrapping paper, set of 6", u"188", u"$2,256"},
                                            {u"Linen bookmark", u"171", u"$1,026"},
                                            {u"Binding kit", u"96", u"$4,704"},
                                            {u"Letter set, grey", u"88", u"$1,584"}}};

constexpr std::array<TableRow, 6> customers{{{u"Harbor Bookshop", u"14", u"$2,118"},
                                             {u"Dunmere Library", u"9", u"$1,342"},
                                             {u"Oakmere Coffee", u"7", u"$884"},
                                             {u"Pelloway Transit", u"4", u"$1,960"},
                                             {u"Quarry Road School", u"3", u"$415"},
                                             {u"Old Tide Mill", u"2", u"$376"}}};

void drawFigure(Canvas& canvas, const QRectF& box, const Figure& figure, const Theme& theme) {
  canvas.panel(box, 8, theme.chrome);
  canvas.textIn({box.left() + 16, box.top() + 10, box.width(), 20}, figure.name, {.size = 13, .color = theme.muted});
  canvas.textIn({box.left() + 16, box.top() + 32, box.width(), 34}, figure.value,
                {.size = 25, .color = theme.text, .weight = Weight::bold});
  canvas.textIn({box.left() + 16, box.top() + 70, box.width(), 20}, figure.change,
                {.size = 12, .color = figure.better ? theme.success : theme.warning});
}

void drawBars(Canvas& canvas, const QRectF& box, const QDateTime& now, const Theme& theme) {
  canvas.panel(box, 8, theme.chrome);
  canvas.textIn({box.left() + 16, box.top() + 10, 400, 22}, u"Revenue by month, in thousands of dollars",
                {.size = 13, .color = theme.text, .weight = Weight::bold});
  const auto plot = box.adjusted(52, 50, -20, -36);
  for (int mark = 0; mark <= 40; mark += 10) {
    const auto y = plot.bottom() - plot.height() * mark / 40;
    canvas.horizontal(plot.left(), plot.right(), y, theme.line);
    canvas.textIn({box.left() + 8, y - 10, 36, 20}, QString::number(mark), {.size = 12, .color = theme.muted},
                  Qt::AlignRight);
  }
  const auto step = plot.width() / static_cast<qreal>(thousands.size());
  auto x = plot.left();
  int monthsBefore = static_cast<int>(thousands.size());
  for (const int value : thousands) {
    const auto height = std::round(plot.height() * value / 40);
    canvas.fill({std::round(x + step * 0.22), plot.bottom() - height, std::round(step * 0.56), height}, theme.accent);
    canvas.textIn({x, plot.bottom() + 8, step, 18}, words(now.addMonths(-monthsBefore--), u"MMM"),
                  {.size = 12, .color = theme.muted}, Qt::AlignCenter);
    x += step;
  }
}

void drawTable(Canvas& canvas, const QRectF& box, QStringView title, std::span<const TableRow> rows,
               const Theme& theme) {
  canvas.panel(box, 8, theme.chrome);
  canvas.textIn({box.left() + 16, box.top() + 10, box.width(), 22}, title,
                {.size = 13, .color = theme.text, .weight = Weight::bold});
  QRectF row(box.left() + 16, box.top() + 40, box.width() - 32, 30);
  for (const auto& [name, count, revenue] : rows) {
    canvas.textIn(row.adjusted(0, 0, -130, 0), name, {.size = 13, .color = theme.text});
    canvas.textIn(row.adjusted(0, 0, -80, 0), count, {.size = 13, .color = theme.muted}, Qt::AlignRight);
    canvas.textIn(row, revenue, {.size = 13, .color = theme.text}, Qt::AlignRight);
    canvas.horizontal(row.left(), row.right(), row.bottom(), theme.line);
    row.translate(0, 31);
  }
}

}  // namespace

void drawDashboard(Canvas& canvas, const Occasion& occasion) {
  constexpr std::array<QStringView, 7> entries{u"#SHOP",     u"Overview", u"Orders", u"Products",
                                               u"Customers", u"#REPORTS", u"Monthly"};
  const auto& theme = darkTheme();
  const auto frame = window(canvas, canvas.bounds(), u"Tarn & Fellow - Shopkeeper", theme);
  const auto page = sidebar(canvas, frame, 160, entries, 1, theme).adjusted(20, 16, -20, -20);
  const auto width = (page.width() - 3 * 14) / 4;
  QRectF box(page.left(), page.top(), width, 100);
  for (const auto& figure : figures) {
    drawFigure(canvas, box, figure, theme);
    box.translate(width + 14, 0);
  }
  const auto below = page.adjusted(0, 114, 0, 0);
  drawBars(canvas, below.adjusted(0, 0, -350, 0), occasion.taken, theme);
  const QRectF table(below.right() - 336, below.top(), 336, (below.height() - 14) / 2);
  drawTable(canvas, table, u"Best sellers", products, theme);
  drawTable(canvas, table.translated(0, table.height() + 14), u"Regular customers", customers, theme);
}

}  // namespace Nimbrel::Samples
