#pragma once

#include "Store/Store.h"

#include <QMimeData>
#include <QObject>

namespace Nimbrel {

/// Takes what is dropped on the main window, or pasted into it, into the catalogue. Main thread.
class FileImports final : public QObject {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit FileImports(Store& store, QObject* parent = nullptr);

  /// Whether there are files or a picture in it.
  [[nodiscard]] static bool canTake(const QMimeData& data);

  /// Imports files where they lie, the images of folders among them, which are looked through in the background. Where
  /// there are no files, a picture becomes one, where a capture of this moment would.
  void take(const QMimeData& data);

 private:
  Store& store_;
};

}  // namespace Nimbrel
