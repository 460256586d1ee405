#pragma once

#include <string_view>

/// What the signals of a receipt look for in a text in lower case, in ICU's dialect.
namespace Nimbrel::ReceiptExpressions {

// In a line.
inline constexpr std::u16string_view money = uR"([$€£₹]\s?\d[\d,.]*|\b(usd|eur|gbp|inr)\s?\d[\d,.]*|\b\d+[.,]\d{2}\b)";
inline constexpr std::u16string_view subtotal = uR"(\bsub\s?total\b)";
inline constexpr std::u16string_view total = uR"(\b(total|amount due|balance due|grand total)\b)";
inline constexpr std::u16string_view totalOfShots = uR"(\b(total shots|shots total|total screenshots)\b)";
inline constexpr std::u16string_view tax = uR"(\b(tax|vat|gst)\b)";

// In the whole text.
inline constexpr std::u16string_view receiptWord = uR"(\b(receipt|invoice|tax invoice)\b)";
inline constexpr std::u16string_view date = uR"(\b\d{1,2}[/.-]\d{1,2}[/.-]\d{2,4}\b|\b\d{4}[/.-]\d{1,2}[/.-]\d{1,2}\b)";
inline constexpr std::u16string_view payment =
    uR"(\b(visa|mastercard|amex|payment method|paid with|card ending|cash|change due)\b)";
inline constexpr std::u16string_view order = uR"(\b(order|invoice|transaction)\s*(number|no\.?|#|id)\b)";
inline constexpr std::u16string_view merchant =
    uR"(\b(merchant|sold by|store #|thank you for (shopping|your purchase)|bill to|ship to)\b)";

}  // namespace Nimbrel::ReceiptExpressions
