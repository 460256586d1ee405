#pragma once

#include "Screencapture/CaptureRequest.h"
#include "Screencapture/DesktopLayout.h"

#include <QPoint>
#include <QRect>

#include <cstdint>
#include <optional>

namespace Nimbrel::Screencapture {

/// What the user chose of the screen.
struct ChosenArea {
  QRect area;                           ///< never empty; of a window it may reach beyond the screen
  std::optional<StackedWindow> window;  ///< when windows were to be chosen

  bool operator==(const ChosenArea&) const = default;
};

/// How a selection comes about, apart from windows and events. The window under the pointer is proposed, and a click
/// takes it. Where an area is wanted, dragging selects freely: edges snap to those of windows and monitors unless the
/// user wants them exact, the whole can be carried to another place meanwhile, and single steps move its free corner.
/// Before, steps move the proposed area, which then stays where it is until it is taken or something is dragged.
class AreaSelection {
 public:
  /// Distances of the hand, in pixels.
  struct Reaches {
    int drag = 4;  ///< so far a press may stray and still be a click
    int snap = 6;  ///< so near edges catch
  };

  AreaSelection(DesktopLayout layout, CaptureRequest::Subject subject, Reaches reaches);

  void movePointer(QPoint position);
  void press();
  /// What is taken by it; absent when there is nothing to take.
  [[nodiscard]] std::optional<ChosenArea> release();
  /// The same for whatever is proposed or selected now.
  [[nodiscard]] std::optional<ChosenArea> take() const;

  /// Whether edges stay where the pointer is.
  void setExact(bool isExact) { isExact_ = isExact; }
  /// Whether the whole selection follows the pointer while it is dragged.
  void setCarried(bool isCarried) { isCarried_ = isCarried; }
  void nudge(QPoint step);

  /// What is proposed or selected, on the screen; empty when nothing is.
  [[nodiscard]] QRect area() const;
  /// The window that is proposed, where windows are to be chosen.
  [[nodiscard]] std::optional<StackedWindow> proposedWindow() const;

 private:
  [[nodiscard]] QRect draggedArea() const;
  [[nodiscard]] QPoint cornerAt(QPoint position) const;
  void beginDrag();
  void carry(QPoint step);

  DesktopLayout layout_;
  CaptureRequest::Subject subject_;
  Reaches reaches_;
  bool isExact_ = false;
  bool isCarried_ = false;
  QPoint pointer_;
  std::optional<StackedWindow> hovered_;
  std::optional<QRect> nudged_;  ///< what was proposed and then moved
  std::optional<QPoint> pressed_;
  bool isDragged_ = false;
  bool isNudged_ = false;  ///< the free corner is where steps have brought it, and no edge may catch it

  // While it is dragged, points between pixels
  QPoint anchor_;
  QPoint corner_;
  QPoint offset_;  ///< from the pointer to the free corner
};

}  // namespace Nimbrel::Screencapture
