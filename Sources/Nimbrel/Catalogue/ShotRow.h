#pragma once

#include "Model/Models.h"

#include <string_view>

namespace Nimbrel {

class Statement;

/// The columns of a select of shots, in the order in which they are read.
inline constexpr std::string_view shotColumns =
    "id,path,name,date,added,bytes,width,height,appName,captureType,filed,ocr,ocrDone,note,tags,favorite,sensitive,"
    "phash,barcodes,bundleID,shownName,appAttributionTrusted";

/// The current row of such a select. Only the value 1 is true; empty pieces of tags and of sensitive kinds are dropped,
/// those of codes kept.
[[nodiscard]] Shot shotFromRow(const Statement& row);

/// Whether the current row reads as `shot`, found out without copying its texts.
[[nodiscard]] bool rowReadsAs(const Statement& row, const Shot& shot);

/// The row id of the current row.
[[nodiscard]] ShotID idOfRow(const Statement& row);
[[nodiscard]] Timestamp dateOfRow(const Statement& row);

/// What separates the entries of the text columns that hold lists.
inline constexpr char tagSeparator = ',';
inline constexpr char codeSeparator = '\n';

}  // namespace Nimbrel
