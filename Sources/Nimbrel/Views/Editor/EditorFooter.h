#pragma once

#include "Views/Editor/EditorState.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace Nimbrel {

/// What can be done with all marks at once, how many there are, and how to leave the editor.
class EditorFooter final : public QWidget {
  Q_OBJECT

 public:
  enum class HoldsSecrets { No, Yes };

  /// The state must outlive it.
  EditorFooter(EditorState& state, HoldsSecrets secrets, QWidget* parent = nullptr);

  /// Whether marks can be changed, and whether there is a picture to save.
  void setCanEdit(bool canEdit);
  void setHasPicture(bool hasPicture);

 Q_SIGNALS:
  /// Before what any of the buttons does.
  void pressed();
  void cancelled();
  void saveRequested();

 private:
  using Command = void (EditorState::*)();
  QPushButton* addButton(QHBoxLayout& row, const char* name, const QString& title);
  QPushButton* addCommand(QHBoxLayout& row, const char* name, const QString& title, Command command);
  void refresh();

  EditorState& state_;
  HoldsSecrets secrets_;
  bool canEdit_ = true;
  bool hasPicture_ = false;
  QPushButton* coverSecrets_;
  QPushButton* coverAllText_;
  QPushButton* undo_;
  QPushButton* clear_;
  QLabel* counter_;
  QPushButton* save_;
};

}  // namespace Nimbrel
