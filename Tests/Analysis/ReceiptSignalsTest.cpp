#include "Analysis/ReceiptSignals.h"

#include "Analysis/ReceiptExpressions.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <string>

namespace Nimbrel {
namespace {

ReceiptSignals signalsIn(std::string_view text) { return ReceiptSignals::in(ShotText(text)); }

std::size_t amountsIn(std::string_view text) { return signalsIn(text).amountLines; }

TEST(ReceiptSignals, AnAmountHasASignACurrencyOrTwoDecimals) {
  for (const std::string_view line : {"$5", "€ 5", "£\u00A05", "₹5", "USD 5", "eur5", "GBP 1,200.50", "inr\t7", "12.50",
                                      "12,50", "x 1200.00 y", "٤٥.٦٧", "$٤"}) {
    EXPECT_EQ(amountsIn(line), 1U) << line;
  }
}

TEST(ReceiptSignals, OtherNumbersAreNoAmounts) {
  for (const std::string_view line :
       {"5", "5 $", "5 USD", "12.5", "12.505", "a12.50", "12.50b", "xusd 5", "$ x", "¥5", "1 . 50", "chf 5", ""}) {
    EXPECT_EQ(amountsIn(line), 0U) << line;
  }
}

TEST(ReceiptSignals, LinesWithAmountsAreCountedOnceEach) {
  EXPECT_EQ(amountsIn("$1 and $2"), 1U);
  EXPECT_EQ(amountsIn("$1\nx\r$2"), 2U);
  EXPECT_EQ(amountsIn("$1\n$2\n$3"), 3U);
  EXPECT_GE(amountsIn("$1\n$2\n$3\n$4\n$5"), ReceiptSignals::manyAmounts);
}

TEST(ReceiptSignals, AReceiptCallsItselfOne) {
  EXPECT_TRUE(signalsIn("Your RECEIPT").receiptWord);
  EXPECT_TRUE(signalsIn("(invoice)").receiptWord);
  EXPECT_TRUE(signalsIn("Tax invoice").receiptWord);
  EXPECT_FALSE(signalsIn("receipts, invoiced").receiptWord);
}

TEST(ReceiptSignals, ASubtotalStandsBesideItsAmount) {
  EXPECT_TRUE(signalsIn("Subtotal $5").subtotal);
  EXPECT_TRUE(signalsIn("Sub total: 5.00").subtotal);
  EXPECT_FALSE(signalsIn("Subtotal\n$5").subtotal);
  EXPECT_FALSE(signalsIn("sub-total $5").subtotal);
  EXPECT_FALSE(signalsIn("subtotals $5").subtotal);
}

TEST(ReceiptSignals, ATotalStandsBesideItsAmount) {
  for (const std::string_view line : {"Total $5", "Amount due 5.00", "Balance due: EUR 5", "Grand total 12,00"}) {
    EXPECT_TRUE(signalsIn(line).total) << line;
  }
  EXPECT_FALSE(signalsIn("Subtotal $5").total);
  EXPECT_FALSE(signalsIn("Totals $5").total);
}

TEST(ReceiptSignals, AnAmountOnTheNextLineDoesNotCount) {
  EXPECT_FALSE(signalsIn("Total\n$5").total);
  EXPECT_FALSE(signalsIn("Tax\n$5").tax);
}

TEST(ReceiptSignals, ATotalOfShotsIsNone) {
  EXPECT_FALSE(signalsIn("Total shots 5.00").total);
  EXPECT_FALSE(signalsIn("Shots total $5").total);
  EXPECT_FALSE(signalsIn("Total screenshots $5").total);
  EXPECT_TRUE(signalsIn("Total shots 5.00\nTotal 6.00").total);
}

TEST(ReceiptSignals, ATaxStandsBesideItsAmount) {
  EXPECT_TRUE(signalsIn("Tax $5").tax);
  EXPECT_TRUE(signalsIn("19% VAT 5.00").tax);
  EXPECT_TRUE(signalsIn("gst 5,00").tax);
  EXPECT_FALSE(signalsIn("taxi $5").tax);
}

TEST(ReceiptSignals, ASignalOnALaterLineCountsAfterManyAmounts) {
  const auto signals = signalsIn("1.00\n2.00\n3.00\n4.00\nSubtotal 10.00\nTax 1.00\nTotal 11.00");
  EXPECT_TRUE(signals.subtotal && signals.tax && signals.total);
}

TEST(ReceiptSignals, ADateHasThreeParts) {
  for (const std::string_view text : {"1/2/26", "on 31.12.2026.", "01-02-2026", "2026-1-2", "2026/12/31", "٣/٤/٢٦"}) {
    EXPECT_TRUE(signalsIn(text).date) << text;
  }
  for (const std::string_view text : {"1/2", "1 / 2 / 26", "123/1/26", "1/2/3", "2026-1", "1/\n2/26", "x1/2/26"}) {
    EXPECT_FALSE(signalsIn(text).date) << text;
  }
}

TEST(ReceiptSignals, APaymentHasAWordOfItsOwn) {
  for (const std::string_view text :
       {"VISA", "Mastercard", "amex", "Payment method:", "paid with", "Card ending 1", "cash", "Change due"}) {
    EXPECT_TRUE(signalsIn(text).payment) << text;
  }
  EXPECT_FALSE(signalsIn("visage cashier payment").payment);
  EXPECT_FALSE(signalsIn("payment\nmethod").payment);
}

TEST(ReceiptSignals, AnOrderHasANumber) {
  for (const std::string_view text : {"Order number 5", "Invoice no. 7", "invoice no 7", "transaction id: x",
                                      "order\n\tnumber", "ordernumber", "order\u2003id"}) {
    EXPECT_TRUE(signalsIn(text).order) << text;
  }
  EXPECT_TRUE(signalsIn("order #a").order);
  for (const std::string_view text : {"order 5", "orders number", "order numbers", "order nothing", "border number"}) {
    EXPECT_FALSE(signalsIn(text).order) << text;
  }
}

TEST(ReceiptSignals, AMerchantHasAWordOfItsOwn) {
  for (const std::string_view text : {"Merchant: x", "sold by x", "Store #a", "Thank you for shopping",
                                      "thank you for your purchase", "Bill to", "ship to"}) {
    EXPECT_TRUE(signalsIn(text).merchant) << text;
  }
  for (const std::string_view text : {"merchants", "thank you for coming", "store # 5", "billto"}) {
    EXPECT_FALSE(signalsIn(text).merchant) << text;
  }
}

TEST(ReceiptSignals, TheScoreIsTheSumOfTheirPoints) {
  EXPECT_EQ(ReceiptSignals{}.score(), 0);
  EXPECT_EQ(ReceiptSignals{.receiptWord = true}.score(), 2);
  EXPECT_EQ(ReceiptSignals{.subtotal = true}.score(), 2);
  EXPECT_EQ(ReceiptSignals{.total = true}.score(), 2);
  EXPECT_EQ(ReceiptSignals{.tax = true}.score(), 1);
  EXPECT_EQ(ReceiptSignals{.date = true}.score(), 1);
  EXPECT_EQ(ReceiptSignals{.payment = true}.score(), 2);
  EXPECT_EQ(ReceiptSignals{.order = true}.score(), 1);
  EXPECT_EQ(ReceiptSignals{.merchant = true}.score(), 1);
  EXPECT_EQ(ReceiptSignals{.amountLines = 2}.score(), 0);
  EXPECT_EQ(ReceiptSignals{.amountLines = 3}.score(), 2);
  EXPECT_EQ((ReceiptSignals{true, true, true, true, true, true, true, true, 9}.score()), 14);
}

/// Whether an expression by itself has a match.
bool holds(std::string_view text, std::u16string_view expression) {
  static std::map<std::u16string_view, Pattern> compiled;
  const auto pattern = compiled.try_emplace(expression, Pattern::constant(expression)).first->second;
  return pattern.isIn(Text::toUtf16(text));
}

/// The signals as the expressions tell them, each run over every line or the whole text.
ReceiptSignals signalsByExpressions(std::string_view text) {
  namespace Expressions = ReceiptExpressions;
  const auto lowered = Text::lowered(text);
  ReceiptSignals signals{.receiptWord = holds(lowered, Expressions::receiptWord),
                         .date = holds(lowered, Expressions::date),
                         .payment = holds(lowered, Expressions::payment),
                         .order = holds(lowered, Expressions::order),
                         .merchant = holds(lowered, Expressions::merchant)};
  for (const auto line : Text::lines(lowered)) {
    if (!holds(line, Expressions::money)) continue;
    ++signals.amountLines;
    signals.subtotal = signals.subtotal || holds(line, Expressions::subtotal);
    signals.total = signals.total || (holds(line, Expressions::total) && !holds(line, Expressions::totalOfShots));
    signals.tax = signals.tax || holds(line, Expressions::tax);
  }
  return signals;
}

std::string randomText(std::mt19937& random) {
  static const std::array<std::string, 90> pieces{"12.50 ",      "12.50 ",
                                                  "$5 ",         "€7,00 ",
                                                  " total ",     "tax ",
                                                  "12.50\n",     "$5\n",
                                                  "12.50 ",      "$5 ",
                                                  " total ",     "subtotal ",
                                                  "tax ",        "order no",
                                                  "1/2/26",      "sub total ",
                                                  "receipt",     "invoice",
                                                  "tax",         "vat",
                                                  "gst",         "sub",
                                                  "total",       "amount due",
                                                  "balance due", "grand ",
                                                  "shots",       "screen",
                                                  "visa",        "amex",
                                                  "cash",        "paid",
                                                  " with",       "card ending",
                                                  "change due",  "payment method",
                                                  "order",       "number",
                                                  "no",          "#",
                                                  "id",          "transaction",
                                                  "merchant",    "sold by",
                                                  "store #",     "thank you for ",
                                                  "shopping",    "your purchase",
                                                  "bill to",     "ship to",
                                                  "usd",         "EUR",
                                                  "gbp",         "inr",
                                                  "$",           "€",
                                                  "£",           "₹",
                                                  "5",           "12",
                                                  "2026",        "50",
                                                  "٤",           "٦٧",
                                                  "\U0001D7D8",  ".",
                                                  ",",           "/",
                                                  "-",           " ",
                                                  " ",           " ",
                                                  "\n",          "\n",
                                                  "\r\n",        "\u2028",
                                                  "\x0B",        "\t",
                                                  "\u00A0",      "\u0301",
                                                  "\u200D",      "\u200F",
                                                  "a",           "_",
                                                  "Ü",           "\xFF",
                                                  ":",           "K\u212A",
                                                  "İ",           "\u00AD"};
  std::string text;
  for (auto i = 1 + random() % 32; i > 0; --i) text += pieces.at(random() % pieces.size());
  return text;
}

TEST(ReceiptSignals, AreThoseThatTheExpressionsFind) {
  std::mt19937 random(17);
  std::array<int, 9> seen{};
  for (int round = 0; round < 8'000; ++round) {
    const auto text = randomText(random);
    auto expected = signalsByExpressions(text);
    auto found = signalsIn(text);
    // Beyond many not all are counted.
    expected.amountLines = std::min(expected.amountLines, ReceiptSignals::manyAmounts);
    found.amountLines = std::min(found.amountLines, ReceiptSignals::manyAmounts);
    EXPECT_EQ(found, expected) << text;
    const std::array flags{
        expected.receiptWord, expected.subtotal, expected.total,
        expected.tax,         expected.date,     expected.payment,
        expected.order,       expected.merchant, expected.amountLines == ReceiptSignals::manyAmounts};
    for (std::size_t i = 0; i < flags.size(); ++i) seen.at(i) += flags.at(i) ? 1 : 0;
  }
  // Every signal was met, so that each was compared where it holds.
  EXPECT_GT(*std::ranges::min_element(seen), 5);
}

TEST(ReceiptPrefilter, SaysNoToOrdinaryLines) {
  EXPECT_FALSE(ReceiptPrefilter::mayHoldAmount("chapter 12 of 30, see page 7."));
  EXPECT_FALSE(ReceiptPrefilter::mayHoldAmount("no digits, no amount"));
  EXPECT_FALSE(ReceiptPrefilter::mayHoldDate("version 12 - final / draft."));
  EXPECT_FALSE(ReceiptPrefilter::mayHoldOrderNumber("in order to place an order today"));
}

}  // namespace
}  // namespace Nimbrel
