#include "Analysis/ReceiptClassifier.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

Shot readShot(std::string text) {
  Shot shot;
  shot.ocr = std::move(text);
  shot.ocrDone = true;
  return shot;
}

bool isReceipt(std::string text) { return ReceiptClassifier::matches(readShot(std::move(text))); }

bool isReceiptInOwnWindow(const std::string& text) {
  auto shot = readShot(text);
  shot.shownName = "Nimbrel";
  return ReceiptClassifier::matches(shot);
}

TEST(ReceiptClassifier, AShotThatWasNotReadIsNoReceipt) {
  auto shot = readShot("Receipt\nSubtotal 5.00\nTax 1.00\nTotal 6.00\nVisa");
  EXPECT_TRUE(ReceiptClassifier::matches(shot));
  shot.ocrDone = false;
  EXPECT_FALSE(ReceiptClassifier::matches(shot));
  EXPECT_FALSE(isReceipt(""));
}

TEST(ReceiptClassifier, TotalAndSubtotalWithTwoAmountsWillDo) {
  EXPECT_TRUE(isReceipt("Subtotal 5.00\nTotal 6.00\nCash"));
  EXPECT_FALSE(isReceipt("Subtotal 5.00 Total 6.00\nCash\n1/2/26")) << "one line with an amount";
  EXPECT_FALSE(isReceipt("Total 6.00\n5.00\nCash\n1/2/26\nbill to")) << "no subtotal";
  EXPECT_FALSE(isReceipt("Subtotal 6.00\n5.00\n4.00\nCash\n1/2/26")) << "no total";
}

TEST(ReceiptClassifier, ItsWordAndAPaymentOrOrderWithTwoAmountsWillDo) {
  EXPECT_TRUE(isReceipt("Receipt\n5.00\n6.00\nCash\n1/2/26"));
  EXPECT_TRUE(isReceipt("Receipt\nTax 5.00\n6.00\nOrder number 7\n1/2/26"));
  EXPECT_FALSE(isReceipt("Receipt\n5.00\nCash\n1/2/26")) << "one amount";
  EXPECT_FALSE(isReceipt("Receipt\nTax 5.00\n6.00\n1/2/26\nbill to")) << "neither payment nor order";
  EXPECT_FALSE(isReceipt("Tax 5.00\n6.00\nOrder number 7\nCash\n1/2/26")) << "no word";
}

TEST(ReceiptClassifier, ItsWordWithThreeAmountsWillDo) {
  EXPECT_TRUE(isReceipt("Receipt\n5.00\n6.00\n7.00\n1/2/26"));
  EXPECT_FALSE(isReceipt("Receipt\nTax 5.00\nTotal 6.00\nbill to\n1/2/26")) << "two amounts";
}

TEST(ReceiptClassifier, FourPointsAreTooFew) {
  // The word, and many amounts.
  EXPECT_FALSE(isReceipt("Receipt\n5.00\n6.00\n7.00"));
  // Total and subtotal.
  EXPECT_FALSE(isReceipt("Subtotal 5.00\nTotal 6.00"));
  // The word and a payment.
  EXPECT_FALSE(isReceipt("Receipt\n5.00\n6.00\nCash"));
}

TEST(ReceiptClassifier, FivePointsAreAReceiptButNotInTheOwnWindow) {
  const std::string text = "Subtotal 5.00\nTotal 6.00\n1/2/26";
  EXPECT_TRUE(isReceipt(text));
  EXPECT_FALSE(isReceiptInOwnWindow(text));
}

TEST(ReceiptClassifier, TheOwnWindowIsKnownByItsTextToo) {
  const std::string text = "Subtotal 5.00\nTotal 6.00\n1/2/26\n";
  EXPECT_FALSE(isReceipt(text + "Search text in shots\nInbox\nFavorites"));
}

TEST(ReceiptClassifier, TheOwnWindowNeedsFarMore) {
  EXPECT_TRUE(isReceiptInOwnWindow("Receipt\nSubtotal 5.00\n1.00\nTotal 6.00\n1/2/26"));
  EXPECT_TRUE(isReceiptInOwnWindow("Receipt\nTax 5.00\n1.00\nTotal 6.00\nCash"));
  EXPECT_TRUE(isReceiptInOwnWindow("Invoice no. 5\nTax 5.00\n1.00\nTotal 6.00"));
}

TEST(ReceiptClassifier, TheOwnWindowNeedsEachOfItsConditions) {
  EXPECT_FALSE(isReceiptInOwnWindow("Subtotal 5.00\n1.00\nTotal 6.00\n1/2/26\nCash")) << "no word";
  EXPECT_FALSE(isReceiptInOwnWindow("Receipt\nSubtotal 5.00\nTotal 6.00\n1/2/26\nCash")) << "two amounts";
  EXPECT_FALSE(isReceiptInOwnWindow("Receipt\nSubtotal 5.00\n1.00\n6.00\n1/2/26\nCash")) << "no total";
  EXPECT_FALSE(isReceiptInOwnWindow("Receipt\n5.00\n1.00\nTotal 6.00\n1/2/26\nCash")) << "neither subtotal nor tax";
  EXPECT_FALSE(isReceiptInOwnWindow("Receipt\nSubtotal 5.00\n1.00\nTotal 6.00\nbill to"))
      << "neither payment nor date nor order";
}

TEST(ReceiptClassifier, AnotherApplicationIsNotTheOwnWindow) {
  auto shot = readShot("Subtotal 5.00\nTotal 6.00\n1/2/26");
  shot.shownName = "Nimbrel 2";
  EXPECT_TRUE(ReceiptClassifier::matches(shot));
}

}  // namespace
}  // namespace Nimbrel
