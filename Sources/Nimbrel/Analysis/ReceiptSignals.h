#pragma once

#include "Analysis/ShotText.h"

#include <cstddef>

namespace Nimbrel {

/// What speaks for a text being a receipt.
struct ReceiptSignals {
  bool receiptWord = false;  ///< it calls itself one
  bool subtotal = false;     ///< beside an amount on its line
  bool total = false;        ///< the same
  bool tax = false;          ///< the same
  bool date = false;
  bool payment = false;
  bool order = false;
  bool merchant = false;
  /// How many lines hold an amount of money; beyond many not all are counted, for nothing depends on it.
  std::size_t amountLines = 0;
  static constexpr std::size_t manyAmounts = 3;

  bool operator==(const ReceiptSignals&) const = default;

  [[nodiscard]] static ReceiptSignals in(const ShotText& text);

  /// The sum of the points of all signals.
  [[nodiscard]] int score() const;
};

/// Cheap tests before the expressions of the signals. Each is exact where it says no: the expression has no match.
namespace ReceiptPrefilter {

[[nodiscard]] bool mayHoldAmount(std::string_view line);
[[nodiscard]] bool mayHoldDate(std::string_view line);
[[nodiscard]] bool mayHoldOrderNumber(std::string_view text);

}  // namespace ReceiptPrefilter

}  // namespace Nimbrel
