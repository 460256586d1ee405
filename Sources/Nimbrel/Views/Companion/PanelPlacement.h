#pragma once

#include "Model/Models.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>
#include <vector>

/// Where the panel of the menu bar stands, and what has room in it. Device-independent pixels. Pure.
namespace Nimbrel::PanelPlacement {

/// A screen, and what panels of the desktop leave of it.
struct Screen {
  QRect whole;
  QRect available;
};

/// What the panel opens beside: the icon, where the tray says where it is; else the pointer, where it is as near to an
/// edge of its screen as trays are; else nothing.
[[nodiscard]] std::optional<QRect> anchor(const QRect& icon, QPoint pointer, const std::vector<Screen>& screens);

/// The screen of the anchor, or of the pointer where there is none. The first one for what is on none; there is one.
[[nodiscard]] std::size_t screenOf(const std::optional<QRect>& anchor, QPoint pointer,
                                   const std::vector<Screen>& screens);

/// The panel's place: below its anchor in the upper half of the screen, else above it, and in the upper right corner
/// without one. Never outside of what is available, as far as there is room.
[[nodiscard]] QRect place(const std::optional<QRect>& anchor, QSize panel, const Screen& screen);

/// The height of the list of shots for an available height of the main screen, absent without one; at text of usual
/// size.
[[nodiscard]] int listHeight(std::optional<int> availableHeight);

/// The shots that the list shows of all, which are newest first.
[[nodiscard]] ShotList recent(const ShotList& shots);

}  // namespace Nimbrel::PanelPlacement
