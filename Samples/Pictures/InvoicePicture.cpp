#include "Samples/Controls.h"
#include "Samples/Pictures/Bill.h"
#include "Samples/Pictures/Pictures.h"

#include <array>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

constexpr std::array<BillItem, 5> items{{{u"Cream card stock, 300 g, A3", 300, 98},
                                         {u"Grey wrapping sheets, 90 g", 120, 45},
                                         {u"Binding thread, linen, 50 m", 6, 1240},
                                         {u"Cutting and packing", 2, 5500},
                                         {u"Delivery, ground floor", 1, 3200}}};

const TextStyle body{.size = 13, .color = QColor(0x23262b)};
const TextStyle strong{.size = 13, .color = QColor(0x23262b), .weight = Weight::bold};
const TextStyle quiet{.size = 12, .color = QColor(0x5f6672)};

void drawInvoiceHead(Canvas& canvas, const QRectF& page, const QDateTime& issued) {
  canvas.fill({page.left(), page.top(), page.width(), 8}, QColor(0x2f5d50));
  const QRectF row(page.left() + 56, page.top() + 44, page.width() - 112, 20);
  canvas.textIn(row.adjusted(0, 0, 0, 12), u"Brindlewick Paper",
                {.size = 24, .color = QColor(0x2f5d50), .face = Face::serif, .weight = Weight::bold});
  canvas.textIn(row.adjusted(0, 0, 0, 12), u"INVOICE", {.size = 22, .color = body.color, .weight = Weight::bold},
                Qt::AlignRight);
  canvas.textIn(row.translated(0, 36), u"402 Quarry Road, Dunmere, OR 97999", quiet);
  canvas.textIn(row.translated(0, 54), u"(503) 555-0142   brindlewick.example.com", quiet);
  canvas.textIn(row.translated(0, 100), u"Bill to", quiet);
  canvas.textIn(row.translated(0, 120), u"Tarn & Fellow Studio", strong);
  canvas.textIn(row.translated(0, 140), u"18 Alder Lane, Suite 4", body);
  canvas.textIn(row.translated(0, 160), u"Dunmere, OR 97999", body);
  const std::array<BillLine, 4> facts{{{u"Invoice number"_s, u"BP-20417"_s},
                                       {u"Date"_s, words(issued, u"MMMM d, yyyy")},
                                       {u"Due"_s, words(issued.addDays(30), u"MMMM d, yyyy")},
                                       {u"Customer"_s, u"C-1186"_s}}};
  QRectF fact(row.right() - 270, row.top() + 100, 270, 20);
  for (const auto& [left, right] : facts) {
    canvas.textIn(fact, left, quiet);
    canvas.textIn(fact, right, strong, Qt::AlignRight);
    fact.translate(0, 20);
  }
}

void drawInvoiceRow(Canvas& canvas, const QRectF& row, const std::array<QString, 4>& cells, const TextStyle& style) {
  const auto column = [&row](qreal fromRight, qreal width) {
    return QRectF(row.right() - fromRight - width, row.top(), width, row.height());
  };
  canvas.textIn(row.adjusted(10, 0, -310, 0), cells[0], style);
  canvas.textIn(column(220, 80), cells[1], style, Qt::AlignRight);
  canvas.textIn(column(115, 100), cells[2], style, Qt::AlignRight);
  canvas.textIn(column(10, 100), cells[3], style, Qt::AlignRight);
}

/// Returns the foot of the table.
qreal drawInvoiceTable(Canvas& canvas, QRectF row) {
  canvas.fill(row, QColor(0xe7efec));
  drawInvoiceRow(canvas, row, {u"Description"_s, u"Quantity"_s, u"Unit price"_s, u"Amount"_s}, strong);
  for (const auto& item : items) {
    row.translate(0, 32);
    drawInvoiceRow(canvas, row,
                   {item.name.toString(), QString::number(item.quantity), dollars(item.cents), dollars(item.amount())},
                   body);
    canvas.horizontal(row.left(), row.right(), row.bottom(), QColor(0xd5d9de));
  }
  return row.bottom();
}

}  // namespace

void drawInvoice(Canvas& canvas, const Occasion& occasion) {
  canvas.fill(canvas.bounds(), QColor(0x7b8087));
  const auto page = canvas.bounds().adjusted(24, 20, -24, 0);
  canvas.fill(page, Qt::white);
  drawInvoiceHead(canvas, page, occasion.taken.addDays(-3));
  const auto foot = drawInvoiceTable(canvas, {page.left() + 56, page.top() + 270, page.width() - 112, 32});
  const auto sum = sumOf(items);
  const auto tax = share(sum, 80);
  QRectF row(page.right() - 56 - 260, foot + 18, 250, 24);
  const std::array<BillLine, 3> sums{
      {{u"Subtotal"_s, dollars(sum)}, {u"Tax 8%"_s, dollars(tax)}, {u"Amount due"_s, dollars(sum + tax)}}};
  for (const auto& [left, right] : sums) {
    const bool last = left == sums.back().left;
    if (last) canvas.horizontal(row.left(), row.right(), row.top(), body.color);
    canvas.textIn(row, left, last ? strong : body);
    canvas.textIn(row, right, last ? strong : body, Qt::AlignRight);
    row.translate(0, 26);
  }
  const QRectF note(page.left() + 56, row.top() + 34, page.width() - 112, 20);
  canvas.textIn(note, u"Payment method: bank transfer, reference BP-20417.", body);
  canvas.textIn(note.translated(0, 22), u"Please pay within 30 days. Goods remain ours until paid in full.", quiet);
}

}  // namespace Nimbrel::Samples
