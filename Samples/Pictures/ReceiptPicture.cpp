#include "Samples/Controls.h"
#include "Samples/Pictures/Bill.h"
#include "Samples/Pictures/Pictures.h"

#include <array>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

constexpr std::array<BillItem, 5> items{{{u"Flat white", 2, 420},
                                         {u"Cardamom bun", 1, 385},
                                         {u"House blend 250 g", 1, 1290},
                                         {u"Oat milk", 2, 60},
                                         {u"Paper filters", 1, 475}}};

const QColor ink(0x25272b);
const TextStyle plain{.size = 13, .color = ink, .face = Face::mono};
const TextStyle bold{.size = 13, .color = ink, .face = Face::mono, .weight = Weight::bold};

/// The strip of paper, printed from the top down.
class Roll {
 public:
  Roll(Canvas& canvas, const QRectF& paper)
      : canvas_(canvas), row_(paper.left() + 20, paper.top() + 20, paper.width() - 40, 22) {}

  void print(const QString& left, const QString& right = {}, const TextStyle& style = plain) {
    canvas_.textIn(row_, left, style);
    canvas_.textIn(row_, right, style, Qt::AlignRight);
    feed(row_.height());
  }

  void printCentered(QStringView text, const TextStyle& style = plain) {
    canvas_.textIn(row_, text, style, Qt::AlignCenter);
    feed(row_.height());
  }

  void printRule() {
    canvas_.horizontal(row_.left(), row_.right(), row_.top() + 7, ink);
    feed(16);
  }

  void feed(qreal height) { row_.translate(0, height); }

 private:
  Canvas& canvas_;
  QRectF row_;
};

}  // namespace

void drawReceipt(Canvas& canvas, const Occasion& occasion) {
  canvas.fill(canvas.bounds(), QColor(0xdcd7cf));
  const auto paper = canvas.bounds().adjusted(22, 18, -22, -18);
  canvas.fill(paper, QColor(0xfdfcf8));
  Roll roll(canvas, paper);
  roll.printCentered(u"OAKMERE COFFEE", {.size = 16, .color = ink, .face = Face::mono, .weight = Weight::bold});
  roll.printCentered(u"27 Weaver Street, Dunmere", {.size = 12, .color = ink, .face = Face::mono});
  roll.printCentered(u"Phone (503) 555-0127", {.size = 12, .color = ink, .face = Face::mono});
  roll.feed(10);
  roll.print(words(occasion.taken.addSecs(-540), u"MM/dd/yyyy  HH:mm"), u"Till 2"_s);
  roll.print(u"Receipt no. 004817"_s);
  roll.feed(8);
  for (const auto& item : items) {
    roll.print(u"%1 x %2"_s.arg(item.quantity).arg(item.name), dollars(item.amount()));
  }
  roll.printRule();
  const auto sum = sumOf(items);
  const auto tax = share(sum, 65);
  roll.print(u"Subtotal"_s, dollars(sum));
  roll.print(u"Sales tax 6.5%"_s, dollars(tax));
  roll.print(u"Total"_s, dollars(sum + tax), bold);
  roll.feed(14);
  roll.print(u"Paid with card ending 0042"_s);
  roll.print(u"Approval 617203"_s);
  roll.feed(18);
  roll.printCentered(u"Thank you for your purchase");
  roll.printCentered(u"Open daily 7:00 to 18:00");
}

}  // namespace Nimbrel::Samples
