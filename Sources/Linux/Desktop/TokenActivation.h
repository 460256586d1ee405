#pragma once

#include "Platform/WindowActivation.h"

#include <memory>

namespace Nimbrel {

/// For windows on Wayland, where the desktop gives the keyboard to who shows a token of its own making.
[[nodiscard]] std::unique_ptr<WindowActivation> makeTokenActivation();

}  // namespace Nimbrel
