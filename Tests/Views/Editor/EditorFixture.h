#pragma once

#include "Support/FakePictureReader.h"
#include "Views/Editor/EditorView.h"
#include "Views/Sheets/SheetFixture.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointF>
#include <QPointer>
#include <QPushButton>

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// The editor over a shot whose picture is 400 by 250, and whose text is what the test says. Points are of 0 to 1.
class EditorFixture : public SheetFixture {
 protected:
  EditorFixture() { reader_.answerByItself(); }

  /// Before the sheet is opened.
  void makeShot(const NewShot& shot = {.name = "Shot.png"});
  void setBlocks(std::vector<TextBlock> blocks);
  /// And waits until picture and text are there.
  void openSheet();
  /// Over the shot that was made, with a reader of the test's own; waits for nothing but the window.
  void showSheet(PictureReader& reader);
  /// All of these, with three lines of text, the second of which is a secret.
  void openWithText();

  void choose(const char* tool) const;
  void moveTo(QEvent::Type type, QPointF point, Qt::MouseButton button = Qt::LeftButton) const;
  void drag(QPointF from, QPointF to) const;
  void click(QPointF point) const;
  /// A mark of each tool by mouse, a crop last.
  void placeOneOfEach() const;
  void press(int key, Qt::KeyboardModifiers modifiers = {}) const;
  /// A button of the footer.
  void push(const char* name) const { button(name)->click(); }

  [[nodiscard]] QPushButton* button(const char* name) const { return in<QPushButton>(*sheet_, name); }
  [[nodiscard]] std::string textOf(const char* label) const { return in<QLabel>(*sheet_, label)->text().toStdString(); }
  [[nodiscard]] const std::vector<Annotation>& items() const { return sheet_->state().items(); }
  [[nodiscard]] std::vector<Annotation::Kind> kinds() const;
  /// That point on the canvas.
  [[nodiscard]] QPointF onCanvas(QPointF point) const;
  [[nodiscard]] bool awaitClosed() const;

  FakePictureReader reader_;
  ShotPtr shot_;
  QPointer<EditorView> sheet_;
};

}  // namespace Nimbrel::Testing
