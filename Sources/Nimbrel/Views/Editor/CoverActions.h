#pragma once

#include "Platform/PictureReader.h"
#include "Views/Editor/MarkList.h"

#include <span>

/// Black bars over recognised text. To cover twice is the same as once. Pure functions of the values.
namespace Nimbrel::CoverActions {

/// Covers every block.
void coverAllText(MarkList& marks, std::span<const TextBlock> blocks);

/// Covers the blocks that hold a secret. One that runs on from a block into the next is in neither, and stays.
void coverSensitive(MarkList& marks, std::span<const TextBlock> blocks);

}  // namespace Nimbrel::CoverActions
