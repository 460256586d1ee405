#include "Analysis/ReceiptClassifier.h"

#include "Analysis/ReceiptSignals.h"

namespace Nimbrel::ReceiptClassifier {

namespace {

constexpr int fewestPoints = 5;
constexpr int fewestPointsInOwnWindow = 7;
constexpr std::string_view ownTitle = "Nimbrel";

/// Without these no text gets as far as the points.
bool mayBeReceipt(const FoundPhrases& phrases) {
  return phrases.any(PhraseList::receiptWords) || phrases.all(PhraseList::subtotal);
}

bool holdsEssentials(const ReceiptSignals& signals) {
  if (signals.total && signals.subtotal && signals.amountLines >= 2) return true;
  if (signals.receiptWord && (signals.payment || signals.order) && signals.amountLines >= 2) return true;
  return signals.receiptWord && signals.amountLines >= ReceiptSignals::manyAmounts;
}

/// The program's own window shows parts of many shots, and so words of receipts.
bool isReceiptInOwnWindow(const ReceiptSignals& signals) {
  return signals.receiptWord && signals.amountLines >= ReceiptSignals::manyAmounts && signals.total &&
         (signals.subtotal || signals.tax) && (signals.payment || signals.date || signals.order) &&
         signals.score() >= fewestPointsInOwnWindow;
}

}  // namespace

bool matches(const Shot& shot) {
  const ShotText text(shot.ocr);
  return matches(shot, text, ContentGroup::forShot(shot, text));
}

bool matches(const Shot& shot, const ShotText& text, const ContentGroup& group) {
  if (!shot.ocrDone || shot.ocr.empty() || !mayBeReceipt(text.phrases())) return false;
  const auto signals = ReceiptSignals::in(text);
  if (!holdsEssentials(signals) || signals.score() < fewestPoints) return false;
  const bool isOwnWindow = group.kind == ContentGroup::Kind::app && group.title == ownTitle;
  return !isOwnWindow || isReceiptInOwnWindow(signals);
}

}  // namespace Nimbrel::ReceiptClassifier
