#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"
#include "Samples/Words.h"

#include <array>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

constexpr qreal rowHeight = 24;
constexpr qreal headWidth = 46;
constexpr std::array<qreal, 8> columnWidths{210, 120, 120, 120, 120, 130, 110, 272};

struct BudgetLine {
  QStringView name;
  /// In dollars for each month of the quarter, then what was planned.
  std::array<int, 3> spent;
  int planned;
  QStringView remark;
};

constexpr std::array<BudgetLine, 16> budget{{{u"Rent and heating", {2150, 2150, 2150}, 6450, u""},
                                             {u"Electricity", {184, 201, 173}, 600, u"New meter"},
                                             {u"Internet and phone", {89, 89, 89}, 267, u""},
                                             {u"Paper and card", {642, 318, 911}, 1700, u"Spring catalog"},
                                             {u"Ink and toner", {230, 0, 245}, 500, u""},
                                             {u"Binding supplies", {74, 132, 58}, 300, u""},
                                             {u"Shipping", {412, 367, 588}, 1200, u"Two rush orders"},
                                             {u"Packaging", {96, 88, 143}, 350, u""},
                                             {u"Software licences", {120, 120, 120}, 360, u""},
                                             {u"Insurance", {310, 0, 0}, 310, u"Paid yearly"},
                                             {u"Repairs", {0, 475, 65}, 400, u"Guillotine blade"},
                                             {u"Travel", {58, 212, 37}, 450, u"Fair in Dunmere"},
                                             {u"Advertising", {150, 150, 260}, 500, u""},
                                             {u"Training", {0, 340, 0}, 400, u""},
                                             {u"Cleaning", {130, 130, 130}, 390, u""},
                                             {u"Coffee and tea", {41, 38, 47}, 120, u""}}};

QString amount(int dollars) { return sampleLocale().toString(dollars); }

struct Row {
  std::array<QString, 8> cells;
  Weight weight = Weight::regular;
};

Row budgetRow(const BudgetLine& line, Weight weight = Weight::regular) {
  const int sum = line.spent[0] + line.spent[1] + line.spent[2];
  return {{line.name.toString(), amount(line.spent[0]), amount(line.spent[1]), amount(line.spent[2]), amount(sum),
           amount(line.planned), amount(line.planned - sum), line.remark.toString()},
          weight};
}

BudgetLine totalLine() {
  BudgetLine total{u"Total", {0, 0, 0}, 0, u""};
  for (const auto& line : budget) {
    for (std::size_t month = 0; month < line.spent.size(); ++month) total.spent[month] += line.spent[month];
    total.planned += line.planned;
  }
  return total;
}

void drawGridHead(Canvas& canvas, const QRectF& grid, const Theme& theme) {
  const QRectF head(grid.left(), grid.top(), grid.width(), rowHeight);
  canvas.fill(head, theme.side);
  canvas.horizontal(head.left(), head.right(), head.bottom() - 1, theme.line);
  auto x = grid.left() + headWidth;
  char16_t letter = u'A';
  for (const auto width : columnWidths) {
    canvas.textIn({x, head.top(), width, rowHeight}, QString(QChar(letter++)), {.size = 12, .color = theme.muted},
                  Qt::AlignCenter);
    x += width;
    canvas.vertical(x - 1, grid.top(), grid.bottom(), theme.line);
  }
}

void drawGridRow(Canvas& canvas, const QRectF& row, int number, const Row& content, const Theme& theme) {
  canvas.fill({row.left(), row.top(), headWidth, rowHeight}, theme.side);
  canvas.textIn({row.left(), row.top(), headWidth, rowHeight}, QString::number(number),
                {.size = 12, .color = theme.muted}, Qt::AlignCenter);
  auto x = row.left() + headWidth;
  for (std::size_t column = 0; column < columnWidths.size(); ++column) {
    const QRectF cell(x, row.top(), columnWidths[column], rowHeight);
    const auto& text = content.cells[column];
    const bool negative = text.startsWith(u'-');
    const bool isText = column == 0 || column + 1 == columnWidths.size();
    canvas.textIn(cell.adjusted(8, 0, -9, 0), text,
                  {.size = 13, .color = negative ? theme.danger : theme.text, .weight = content.weight},
                  isText ? Qt::AlignLeft : Qt::AlignRight);
    canvas.vertical(cell.right() - 1, cell.top(), cell.bottom(), theme.line);
    x = cell.right();
  }
  canvas.horizontal(row.left(), row.right(), row.bottom() - 1, theme.line);
}

void drawFormulaBar(Canvas& canvas, const QRectF& bar, const Theme& theme) {
  canvas.horizontal(bar.left(), bar.right(), bar.bottom() - 1, theme.line);
  const TextStyle style{.size = 13, .color = theme.text, .face = Face::mono};
  canvas.textIn(bar.adjusted(14, 0, 0, 0), u"E20", style);
  canvas.vertical(bar.left() + 66, bar.top() + 6, bar.bottom() - 6, theme.line);
  canvas.textIn(bar.adjusted(82, 0, 0, 0), u"=SUM(E4:E19)", style);
}

}  // namespace

void drawSpreadsheet(Canvas& canvas, const Occasion& occasion) {
  const auto& theme = lightTheme();
  const auto screen = desktop(canvas, u"Gridleaf", occasion.taken);
  const auto year = words(occasion.taken, u"yyyy");
  const auto frame = screen.adjusted(96, 44, -96, -56);
  auto page = floatingWindow(canvas, frame, u"Studio budget "_s + year + u" - Gridleaf"_s, theme);
  const auto total = totalLine();
  const auto sum = total.spent[0] + total.spent[1] + total.spent[2];
  page = statusBar(canvas, page, u"Sheet 1 of 3: First quarter",
                   u"Sum: %1   Count: %2"_s.arg(amount(sum)).arg(budget.size()), theme);
  drawFormulaBar(canvas, {page.left(), page.top(), page.width(), 34}, theme);
  const auto grid = page.adjusted(0, 34, 0, 0);
  drawGridHead(canvas, grid, theme);
  canvas.painter().setClipRect(grid);
  QRectF row(grid.left(), grid.top() + rowHeight, grid.width(), rowHeight);
  int number = 1;
  const auto add = [&](const Row& content) {
    drawGridRow(canvas, row, number++, content, theme);
    row.translate(0, rowHeight);
  };
  add({{u"Studio budget "_s + year}, Weight::bold});
  add({});
  add({{u"Item"_s, u"January"_s, u"February"_s, u"March"_s, u"Quarter"_s, u"Planned"_s, u"Left"_s, u"Remark"_s},
       Weight::bold});
  for (const auto& line : budget) add(budgetRow(line));
  const auto totalTop = row.top();
  add(budgetRow(total, Weight::bold));
  while (row.top() < grid.bottom()) add({});
  const auto left = grid.left() + headWidth + columnWidths[0] + columnWidths[1] + columnWidths[2] + columnWidths[3];
  canvas.panel({left - 1, totalTop - 1, columnWidths[4] + 1, rowHeight + 1}, 0, Qt::NoBrush, theme.accent);
}

void drawPriceTable(Canvas& canvas, const Occasion& /*occasion*/) {
  constexpr std::array<std::array<QStringView, 4>, 7> rows{{{u"Zone", u"Up to 1 kg", u"5 kg", u"20 kg"},
                                                            {u"Local", u"$4.20", u"$6.80", u"$12.50"},
                                                            {u"Coast", u"$5.60", u"$8.90", u"$16.75"},
                                                            {u"Inland", u"$6.10", u"$9.70", u"$18.40"},
                                                            {u"Islands", u"$9.80", u"$15.30", u"$31.00"},
                                                            {u"North", u"$12.40", u"$19.90", u"$42.60"},
                                                            {u"Overseas", u"$21.90", u"$38.50", u"$96.20"}}};
  constexpr std::array<qreal, 4> columns{110, 96, 96, 97};
  const auto& theme = lightTheme();
  canvas.fill(canvas.bounds(), theme.page);
  canvas.textIn({8, 6, 400, 30}, u"Shipping rates from April",
                {.size = 15, .color = theme.text, .weight = Weight::bold});
  QRectF row(7, 42, 399, 31);
  for (const auto& cells : rows) {
    const bool head = &cells == &rows.front();
    if (head) canvas.fill(row, theme.selection);
    auto x = row.left();
    for (std::size_t column = 0; column < cells.size(); ++column) {
      const QRectF cell(x, row.top(), columns[column], row.height());
      canvas.textIn(cell.adjusted(9, 0, -9, 0), cells[column],
                    {.size = 13, .color = theme.text, .weight = head ? Weight::bold : Weight::regular},
                    column == 0 ? Qt::AlignLeft : Qt::AlignRight);
      x = cell.right();
    }
    canvas.horizontal(row.left(), row.right(), row.bottom(), theme.line);
    row.translate(0, 31);
  }
  canvas.textIn({8, 262, 400, 20}, u"Prices without tax. Parcels are insured up to $100.",
                {.size = 11, .color = theme.muted});
}

}  // namespace Nimbrel::Samples
