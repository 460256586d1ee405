#pragma once

#include "Platform/Pasteboard.h"
#include "Platform/PictureReader.h"
#include "Views/Editor/MarkList.h"

#include <QObject>
#include <QPointF>
#include <QSizeF>

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Nimbrel {

/// What the editor knows while it is open: the marks, the recognised text, and the choices of the user. It has no
/// window. Main thread.
class EditorState final : public QObject {
  Q_OBJECT

 public:
  /// The pasteboard must outlive it.
  explicit EditorState(Pasteboard& pasteboard, QObject* parent = nullptr);

  [[nodiscard]] const std::vector<Annotation>& items() const { return marks_.items(); }

  /// In pixels, upright; 1 by 1 until the picture is known.
  [[nodiscard]] QSizeF pixelSize() const { return pixelSize_; }
  void setPixelSize(QSizeF size) { pixelSize_ = size; }

  /// In reading order.
  [[nodiscard]] const std::vector<TextBlock>& blocks() const { return blocks_; }
  void setBlocks(std::vector<TextBlock> blocks);

  /// Row of EditorTools::all().
  [[nodiscard]] int tool() const { return tool_; }
  void setTool(int tool);
  /// Row of InkColor::all().
  [[nodiscard]] int colorIndex() const { return colorIndex_; }
  void setColorIndex(int index) { colorIndex_ = index; }
  /// What the next label says.
  [[nodiscard]] const std::string& labelText() const { return labelText_; }
  void setLabelText(std::string text) { labelText_ = std::move(text); }
  /// What became of the last copy; empty before the first.
  [[nodiscard]] const std::string& note() const { return note_; }

  // Gestures, in the coordinates of the picture at its fitted size.

  /// A drag has ended. Points beyond the picture count as its edge.
  void finishDrag(QPointF from, QPointF to, QSizeF fitted);
  void click(QPointF point, QSizeF fitted);

  // For the tools.

  /// Adds a mark in the chosen colour.
  void place(Annotation::Kind kind, QPointF start, QPointF end, int number = 0, std::string text = {});
  [[nodiscard]] std::size_t countOf(Annotation::Kind kind) const { return marks_.countOf(kind); }
  /// Puts a text on the pasteboard and says so in the note.
  void copy(std::string_view text);

  // Commands.

  void coverSensitive();
  void coverAllText();
  void undo();
  void redo();
  void clear();
  /// By pixels of the picture.
  void nudge(QSizeF pixels);
  void setText(const QUuid& id, std::string text);

 Q_SIGNALS:
  void marksChanged();
  void blocksChanged();
  void toolChanged();
  void noteChanged();

 private:
  Pasteboard& pasteboard_;
  MarkList marks_;
  QSizeF pixelSize_{1, 1};
  std::vector<TextBlock> blocks_;
  int tool_ = 0;
  int colorIndex_ = 0;
  std::string labelText_ = "Note";
  std::string note_;
};

/// A point of the picture at its fitted size as 0 to 1; beyond the picture it counts as its edge.
[[nodiscard]] QPointF normalized(QPointF point, QSizeF fitted);

/// "7 marks".
[[nodiscard]] std::string markCount(std::size_t count);

}  // namespace Nimbrel
