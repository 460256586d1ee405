#pragma once

#include "Outcome.h"
#include "Session.h"

#include <functional>
#include <span>
#include <string>

namespace Nimbrel::Ctl {

/// What a command does with the Store.
using StoreAction = std::function<Outcome(Store&)>;
/// What a command does with the shots that were named.
using ShotsAction = std::function<Outcome(Store&, const ShotList&)>;

/// Opens the catalogue and acts on it. A catalogue that cannot be opened fails the command.
[[nodiscard]] Outcome withStore(Session& session, const StoreAction& action);

/// Opens the catalogue and acts on the shots with these row ids, in that order, each once. A word that is no row
/// id is wrong usage; an id that no shot has fails the command before anything was done.
[[nodiscard]] Outcome withShots(std::span<const std::string> ids, Session& session, const ShotsAction& action);

}  // namespace Nimbrel::Ctl
