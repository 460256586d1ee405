#pragma once

#include "Analysis/ContentGrouping.h"
#include "Analysis/ShotText.h"
#include "Model/Models.h"

/// Tells receipts and invoices from other shots by points for what stands in their text. Pure, any thread.
namespace Nimbrel::ReceiptClassifier {

[[nodiscard]] bool matches(const Shot& shot);
/// The same, with the shot's text made ready and its group known.
[[nodiscard]] bool matches(const Shot& shot, const ShotText& text, const ContentGroup& group);

}  // namespace Nimbrel::ReceiptClassifier
