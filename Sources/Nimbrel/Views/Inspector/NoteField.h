#pragma once

#include "Views/Inspector/BoxedText.h"

namespace Nimbrel {

/// A field for a note that grows with it, from two lines to six. Return hands it in; with Shift or Alt it begins a new
/// line.
class NoteField final : public BoxedText {
  Q_OBJECT

 public:
  explicit NoteField(QWidget* parent = nullptr);

  /// Without telling. A text that is there already keeps cursor and history.
  void setNote(const QString& note);
  /// With a line feed between lines, and every other character as it was typed.
  [[nodiscard]] QString note() const;

 Q_SIGNALS:
  void noteEdited();
  void submitted();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();

  QString given_;  ///< the note as it was set, until it is edited; a field has one kind of line break alone
};

}  // namespace Nimbrel
