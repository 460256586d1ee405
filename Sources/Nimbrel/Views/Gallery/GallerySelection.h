#pragma once

#include "Catalogue/Database.h"
#include "Model/Models.h"

#include <Qt>

#include <optional>

/// What a click, an action and the gallery's pager make of the selection. Pure functions of their arguments; those that
/// may leave the selection as it is answer nothing then.
namespace Nimbrel::GallerySelection {

/// After a click on a shot: with the command key the shot goes in or out; with shift all shots of `visible` between it
/// and any one of the selected join; else it alone is selected, and so with shift when nothing is.
[[nodiscard]] std::optional<ShotIDSet> clicked(ShotID id, const ShotIDSet& selection, const ShotList& visible,
                                               Qt::KeyboardModifiers modifiers);

/// What an action on a shot applies to: the selected ones of `visible` when it is one of several selected, else it.
[[nodiscard]] ShotList targets(const ShotPtr& shot, const ShotIDSet& selection, const ShotList& visible);

/// After the pager or the filmstrip came to a shot: that alone, unless it is so, or it is not in `ordered`.
[[nodiscard]] std::optional<ShotIDSet> scrolledTo(ShotID id, const ShotIDSet& selection, const ShotList& ordered);

/// Where the pager and the filmstrip have to go for a selection: to the only selected shot.
[[nodiscard]] std::optional<ShotID> scrollTarget(const ShotIDSet& selection);

/// The shot that the pager begins with: the focused one, else the first.
[[nodiscard]] std::optional<ShotID> start(const std::optional<ShotPtr>& focused, const ShotList& ordered);

}  // namespace Nimbrel::GallerySelection
