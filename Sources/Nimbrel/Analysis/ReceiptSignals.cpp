#include "Analysis/ReceiptSignals.h"

#include "Analysis/ReceiptExpressions.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Nimbrel {

namespace {

using Lines = std::vector<std::string_view>;

struct Expressions {
  Pattern money = Pattern::constant(ReceiptExpressions::money);
  Pattern receiptWord = Pattern::constant(ReceiptExpressions::receiptWord);
  Pattern subtotal = Pattern::constant(ReceiptExpressions::subtotal);
  Pattern total = Pattern::constant(ReceiptExpressions::total);
  Pattern totalOfShots = Pattern::constant(ReceiptExpressions::totalOfShots);
  Pattern tax = Pattern::constant(ReceiptExpressions::tax);
  Pattern date = Pattern::constant(ReceiptExpressions::date);
  Pattern payment = Pattern::constant(ReceiptExpressions::payment);
  Pattern order = Pattern::constant(ReceiptExpressions::order);
  Pattern merchant = Pattern::constant(ReceiptExpressions::merchant);
};

const Expressions& expressions() {
  static const Expressions compiled;
  return compiled;
}

template <class MayHold>
bool isInSomeLine(const Pattern& pattern, const Lines& lines, MayHold mayHold) {
  return std::ranges::any_of(lines,
                             [&](std::string_view line) { return mayHold(line) && pattern.isIn(Text::toUtf16(line)); });
}

/// For an expression that never spans lines, whose matches all hold one of the phrases.
bool isInSomeLine(const Pattern& pattern, const Lines& lines, const ShotText& text, PhraseList hints) {
  return text.phrases().any(hints) &&
         isInSomeLine(pattern, lines, [&](std::string_view line) { return holdsAny(line, hints); });
}

/// Enters what a line with an amount says besides.
void readAmountLine(ReceiptSignals& signals, std::string_view line, const std::u16string& characters) {
  const auto& patterns = expressions();
  ++signals.amountLines;
  if (!signals.subtotal && holdsAny(line, PhraseList::subtotal)) signals.subtotal = patterns.subtotal.isIn(characters);
  if (!signals.total && holdsAny(line, PhraseList::total)) {
    signals.total = patterns.total.isIn(characters) && !patterns.totalOfShots.isIn(characters);
  }
  if (!signals.tax && holdsAny(line, PhraseList::tax)) signals.tax = patterns.tax.isIn(characters);
}

/// Whether the line may bring a signal that is still missing, if it holds an amount.
bool isWanted(const ReceiptSignals& signals, std::string_view line) {
  return signals.amountLines < ReceiptSignals::manyAmounts ||
         (!signals.subtotal && holdsAny(line, PhraseList::subtotal)) ||
         (!signals.total && holdsAny(line, PhraseList::total)) || (!signals.tax && holdsAny(line, PhraseList::tax));
}

void readAmounts(ReceiptSignals& signals, const Lines& lines) {
  for (const auto line : lines) {
    if (!isWanted(signals, line) || !ReceiptPrefilter::mayHoldAmount(line)) continue;
    const auto characters = Text::toUtf16(line);
    if (expressions().money.isIn(characters)) readAmountLine(signals, line, characters);
  }
}

}  // namespace

ReceiptSignals ReceiptSignals::in(const ShotText& text) {
  const auto& patterns = expressions();
  const auto lines = text.lines();
  ReceiptSignals signals;
  readAmounts(signals, lines);
  signals.receiptWord = isInSomeLine(patterns.receiptWord, lines, text, PhraseList::receiptWords);
  signals.date = isInSomeLine(patterns.date, lines, ReceiptPrefilter::mayHoldDate);
  signals.payment = isInSomeLine(patterns.payment, lines, text, PhraseList::payment);
  signals.merchant = isInSomeLine(patterns.merchant, lines, text, PhraseList::merchant);
  // "order" and its "number" may stand on two lines.
  signals.order = text.phrases().any(PhraseList::order) && ReceiptPrefilter::mayHoldOrderNumber(text.lowered()) &&
                  patterns.order.isIn(Text::toUtf16(text.lowered()));
  return signals;
}

int ReceiptSignals::score() const {
  int points = 0;
  if (receiptWord) points += 2;
  if (subtotal) points += 2;
  if (total) points += 2;
  if (tax) points += 1;
  if (date) points += 1;
  if (payment) points += 2;
  if (order) points += 1;
  if (merchant) points += 1;
  if (amountLines >= manyAmounts) points += 2;
  return points;
}

}  // namespace Nimbrel
