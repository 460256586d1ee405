#pragma once

#include "Store/Store.h"
#include "Views/Window/WindowParts.h"

#include <QStackedWidget>
#include <QTimer>

namespace Nimbrel {

/// What there is to tell of the selection: the inspector for one shot, the view of several, or that there is none.
class DetailsColumn final : public QStackedWidget {
  Q_OBJECT

 public:
  /// Store and target must outlive it.
  DetailsColumn(Store& store, const WindowParts& parts, EditorTarget& editor, QWidget* parent = nullptr);

  [[nodiscard]] QSize minimumSizeHint() const override { return {}; }

 private:
  QWidget* addPage(const WindowParts::Column& make, EditorTarget& editor);
  void choose();

  Store& store_;
  QWidget* inspector_;
  QWidget* several_;
  QWidget* nothing_;
  QTimer choosing_;  ///< one choice for all that changes in a turn
};

}  // namespace Nimbrel
