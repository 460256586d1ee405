#pragma once

#include "Views/Editor/EditorState.h"
#include "Views/Shared/BusyRing.h"

#include <QLabel>
#include <QWidget>

namespace Nimbrel {

/// The title of the editor, how the chosen tool is used, and what became of the last copy.
class EditorHeader final : public QWidget {
  Q_OBJECT

 public:
  /// The state must outlive it.
  explicit EditorHeader(EditorState& state, QWidget* parent = nullptr);

  /// Whether something is under way that the user waits for.
  void setBusy(bool isBusy) { busy_->setVisible(isBusy); }

 private:
  void refresh();

  EditorState& state_;
  QLabel* hint_;
  QLabel* note_;
  BusyRing* busy_;
};

}  // namespace Nimbrel
