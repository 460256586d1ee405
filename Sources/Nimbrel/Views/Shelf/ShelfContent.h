#pragma once

#include "Store/Store.h"

#include <QString>

namespace Nimbrel {

/// What the shelf says of a shot and what it offers to do with it. A plain value.
struct ShelfContent {
  QString title;  ///< the name, or why that is not told; on one line
  QString place;
  bool isMasked = false;  ///< neither name nor picture is shown
  bool canReleasePicture = false;
  bool canCopyText = false;
  bool canFile = false;

  bool operator==(const ShelfContent&) const = default;
};

/// A shot that has not been read yet may turn out to be sensitive: where such are protected, nothing of it leaves
/// before that is known. Main thread.
[[nodiscard]] ShelfContent shelfContent(const Store& store, const Shot& shot);

}  // namespace Nimbrel
