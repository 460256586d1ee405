#include "Views/Editor/EditorState.h"

#include "Foundation/Text.h"
#include "Views/Editor/CoverActions.h"
#include "Views/Editor/EditorTool.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

EditorState::EditorState(Pasteboard& pasteboard, QObject* parent) : QObject(parent), pasteboard_(pasteboard) {}

void EditorState::setBlocks(std::vector<TextBlock> blocks) {
  blocks_ = std::move(blocks);
  Q_EMIT blocksChanged();
}

void EditorState::setTool(int tool) {
  if (std::exchange(tool_, tool) != tool) Q_EMIT toolChanged();
}

void EditorState::finishDrag(QPointF from, QPointF to, QSizeF fitted) {
  if (fitted.isEmpty()) return;
  EditorTools::at(tool_).drag(*this, normalized(from, fitted), normalized(to, fitted));
}

void EditorState::click(QPointF point, QSizeF fitted) {
  if (fitted.isEmpty()) return;
  EditorTools::at(tool_).click(*this, normalized(point, fitted));
}

void EditorState::place(Annotation::Kind kind, QPointF start, QPointF end, int number, std::string text) {
  Annotation mark;
  mark.kind = kind;
  mark.start = start;
  mark.end = end;
  mark.colorIndex = colorIndex_;
  mark.number = number;
  mark.text = std::move(text);
  marks_.add(std::move(mark));
  Q_EMIT marksChanged();
}

void EditorState::copy(std::string_view text) {
  if (text.empty()) {
    note_ = "No text there";
  } else {
    pasteboard_.writeText(text);
    note_ = "Copied " + std::to_string(Text::characterCount(text)) + " characters";
  }
  Q_EMIT noteChanged();
}

void EditorState::coverSensitive() {
  CoverActions::coverSensitive(marks_, blocks_);
  Q_EMIT marksChanged();
}

void EditorState::coverAllText() {
  CoverActions::coverAllText(marks_, blocks_);
  Q_EMIT marksChanged();
}

void EditorState::undo() {
  marks_.undo();
  Q_EMIT marksChanged();
}

void EditorState::redo() {
  marks_.redo();
  Q_EMIT marksChanged();
}

void EditorState::clear() {
  marks_.clear();
  Q_EMIT marksChanged();
}

void EditorState::nudge(QSizeF pixels) {
  marks_.nudge(pixels, pixelSize_);
  Q_EMIT marksChanged();
}

void EditorState::setText(const QUuid& id, std::string text) {
  marks_.setText(id, std::move(text));
  Q_EMIT marksChanged();
}

QPointF normalized(QPointF point, QSizeF fitted) {
  return {std::clamp(point.x() / fitted.width(), 0.0, 1.0), std::clamp(point.y() / fitted.height(), 0.0, 1.0)};
}

std::string markCount(std::size_t count) { return std::to_string(count) + (count == 1 ? " mark" : " marks"); }

}  // namespace Nimbrel
