#pragma once

#include "Store/Store.h"

#include <QObject>

#include <optional>

namespace Nimbrel {

/// The shot that is open in the editor of the main window. A request from elsewhere opens the editor for a shot that is
/// in the catalogue; locking the shot again closes it. A shot that leaves the catalogue stays open. Main thread.
class EditorTarget final : public QObject {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit EditorTarget(Store& store, QObject* parent = nullptr);

  [[nodiscard]] const std::optional<ShotPtr>& shot() const { return shot_; }
  /// Whoever opens a shot has asked for access to it.
  void setShot(std::optional<ShotPtr> shot);

 Q_SIGNALS:
  void changed();

 private:
  void closeLocked();
  void takeRequest();

  Store& store_;
  std::optional<ShotPtr> shot_;
};

}  // namespace Nimbrel
