#pragma once

#include "Model/Models.h"

/// Tells receipts and invoices from other shots by points for what stands in their text. Pure, any thread.
namespace Nimbrel::ReceiptClassifier {

[[nodiscard]] bool matches(const Shot& shot);

}  // namespace Nimbrel::ReceiptClassifier
