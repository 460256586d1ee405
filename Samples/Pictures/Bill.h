#pragma once

#include "Samples/Words.h"

#include <span>

namespace Nimbrel::Samples {

/// A thing that was bought: how many of it, and cents for each.
struct BillItem {
  QStringView name;
  int quantity = 0;
  qint64 cents = 0;

  [[nodiscard]] constexpr qint64 amount() const { return quantity * cents; }
};

struct BillLine {
  QString left;
  QString right;
};

[[nodiscard]] constexpr qint64 sumOf(std::span<const BillItem> items) {
  qint64 sum = 0;
  for (const auto& item : items) sum += item.amount();
  return sum;
}

/// A share in tenths of a per cent, rounded to whole cents.
[[nodiscard]] constexpr qint64 share(qint64 cents, int perMille) { return (cents * perMille + 500) / 1000; }

}  // namespace Nimbrel::Samples
