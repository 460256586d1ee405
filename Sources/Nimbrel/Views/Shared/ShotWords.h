#pragma once

#include "Model/Models.h"

#include <QString>

#include <cstdint>
#include <string_view>

namespace Nimbrel {

class Store;

/// A text of ours, or one that comes from a file, for labels: UTF-8 as far as it is, on one line, with nothing in it
/// that steers what stands around it.
[[nodiscard]] QString shownText(std::string_view text);

/// The same for an entry of a menu, in which an ampersand is one.
[[nodiscard]] QString menuText(std::string_view text);

/// The shot's name, or what stands for it while the shot is protected.
[[nodiscard]] QString shownName(const Store& store, const Shot& shot);

/// The bytes of the shots' files together.
[[nodiscard]] std::int64_t totalBytes(const ShotList& shots);

/// "7 shots · 5.8 MB".
[[nodiscard]] QString countAndSize(const ShotList& shots);

}  // namespace Nimbrel
