#pragma once

#include "Views/Editor/EditorState.h"
#include "Views/Shared/SegmentedControl.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QWidget>

namespace Nimbrel {

/// The choice of the tool, the words of the next label, and the inks.
class EditorToolbar final : public QWidget {
  Q_OBJECT

 public:
  /// The state must outlive it.
  explicit EditorToolbar(EditorState& state, QWidget* parent = nullptr);

 private:
  void addTools(QHBoxLayout& row);
  void addLabelField(QHBoxLayout& row);
  void addInks(QHBoxLayout& row);
  void refresh();

  EditorState& state_;
  SegmentedControl* tools_;
  QLineEdit* label_;
};

}  // namespace Nimbrel
