#include "Views/Gallery/GalleryKeyboardCommands.h"

#include <QKeySequence>

#include <optional>

namespace Nimbrel {

namespace {

std::optional<Store::Direction> directionOf(int key, Qt::LayoutDirection direction) {
  const bool isMirrored = direction == Qt::RightToLeft;
  switch (key) {
    case Qt::Key_Up:
      return Store::Direction::Up;
    case Qt::Key_Down:
      return Store::Direction::Down;
    case Qt::Key_Left:
      return isMirrored ? Store::Direction::Right : Store::Direction::Left;
    case Qt::Key_Right:
      return isMirrored ? Store::Direction::Left : Store::Direction::Right;
    default:
      return std::nullopt;
  }
}

}  // namespace

KeyOutcome handleGalleryKey(const QKeyEvent& event, Qt::LayoutDirection direction, Store& store,
                            GalleryActions& actions) {
  const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
  const bool isPlain = modifiers == Qt::NoModifier;
  if (const auto way = directionOf(event.key(), direction); way && (isPlain || modifiers == Qt::ShiftModifier)) {
    store.move(*way, isPlain ? Store::Extend::No : Store::Extend::Yes);
    return KeyOutcome::Moved;
  }
  if (isPlain && event.key() == Qt::Key_Delete) {
    if (const auto shots = store.selectedShots(); !shots.empty()) store.trash(shots);
    return KeyOutcome::Done;
  }
  if (isPlain && event.key() == Qt::Key_Space) {
    actions.quickLook();
    return KeyOutcome::Done;
  }
  if (isPlain && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)) {
    if (const auto shot = store.focused()) actions.open(*shot);
    return KeyOutcome::Done;
  }
  return KeyOutcome::NotOurs;
}

}  // namespace Nimbrel
