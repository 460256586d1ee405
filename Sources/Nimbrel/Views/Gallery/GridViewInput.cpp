// What the mouse and the keyboard do in the grid.

#include "Views/Gallery/CellMenu.h"
#include "Views/Gallery/GalleryKeyboardCommands.h"
#include "Views/Gallery/GallerySelection.h"
#include "Views/Gallery/GridView.h"
#include "Views/Gallery/ShotDrag.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QMouseEvent>

#include <utility>

namespace Nimbrel {

void GridView::click(std::size_t cell, Qt::KeyboardModifiers modifiers) {
  auto& store = context_.store;
  // Only a range needs to know what lies between.
  const auto visible = modifiers.testFlag(Qt::ShiftModifier) ? store.visible() : ShotList();
  const auto selection = GallerySelection::clicked(shots_[cell]->id, store.selection(), visible, modifiers);
  if (selection) store.setSelection(*selection);
}

void GridView::keyPressEvent(QKeyEvent* event) {
  const auto before = context_.store.selection();
  switch (handleGalleryKey(*event, layoutDirection(), context_.store, context_.actions)) {
    case KeyOutcome::NotOurs:
      return QAbstractScrollArea::keyPressEvent(event);
    case KeyOutcome::Done:
      return;
    case KeyOutcome::Moved:
      break;
  }
  // The end that the keys have moved.
  std::optional<std::size_t> end;
  const bool isForward = event->key() == Qt::Key_Down ||
                         event->key() == (layoutDirection() == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right);
  for (std::size_t cell = 0; cell < shots_.size(); ++cell) {
    if (!isCellSelected(cell) || before.contains(shots_[cell]->id)) continue;
    end = cell;
    if (!isForward) break;
  }
  if (end) reveal(*end);
}

void GridView::mousePressEvent(QMouseEvent* event) {
  const auto cell = event->button() == Qt::LeftButton ? cellAt(event->position().toPoint()) : std::nullopt;
  pressed_ = cell ? std::optional(shots_[*cell]) : std::nullopt;
  pressedAt_ = event->position().toPoint();
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  const auto way = event->position().toPoint() - pressedAt_;
  if (way.manhattanLength() < QApplication::startDragDistance()) return;
  if (const auto shot = std::exchange(pressed_, std::nullopt)) startDrag(*shot);
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
  const auto shot = std::exchange(pressed_, std::nullopt);
  const auto cell = cellAt(event->position().toPoint());
  if (shot && cell && shots_[*cell]->id == (*shot)->id) click(*cell, event->modifiers());
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  // The first of the two clicks has selected.
  pressed_.reset();
  const auto cell = event->button() == Qt::LeftButton ? cellAt(event->position().toPoint()) : std::nullopt;
  if (cell) context_.actions.open(ShotPtr(shots_[*cell]));
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKeyboard = event->reason() == QContextMenuEvent::Keyboard;
  const auto cell = isByKeyboard ? selectedCell() : cellAt(event->pos());
  if (!cell) return;
  if (isByKeyboard) reveal(*cell);
  const auto shot = shots_[*cell];
  auto* menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("gallery.cellMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto targets = GallerySelection::targets(shot, context_.store.selection(), context_.store.visible());
  fillCellMenu(*menu, shot, targets, context_.store, context_.actions);
  menu->popup(isByKeyboard ? viewport()->mapToGlobal(cellPlace(*cell).center()) : event->globalPos());
}

void GridView::startDrag(const ShotPtr& shot) {
  auto mime = dragData(context_.store, *shot);
  if (!mime) return;
  // Of the window, and in a turn of its own: while it lasts the list may become another, and this grid go.
  auto* drag = new QDrag(window());
  drag->setMimeData(mime.release());
  drag->setPixmap(dragPreview(thumbs_.picture(shot->path), devicePixelRatioF()));
  QMetaObject::invokeMethod(
      drag,
      [drag] {
        // Begun after the button was let go, it would hold the pointer until the next click.
        if (!QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) return drag->deleteLater();
        drag->exec(Qt::CopyAction);
      },
      Qt::QueuedConnection);
}

}  // namespace Nimbrel
