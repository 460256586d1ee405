#pragma once

#include "Model/Models.h"
#include "Store/Store.h"

#include <QMimeData>
#include <QPixmap>

#include <memory>

namespace Nimbrel {

/// What a shot that is dragged out of the gallery offers: its file, and its picture, which is read when it is asked
/// for. Null for a protected shot, so that a locked picture cannot leave. Main thread.
[[nodiscard]] std::unique_ptr<QMimeData> dragData(const Store& store, const Shot& shot);

/// What is seen of it under the pointer; `picture` is null while there is none.
[[nodiscard]] QPixmap dragPreview(const QPixmap* picture, double scale);

}  // namespace Nimbrel
