#pragma once

#include "Foundation/Timestamp.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// The row id of a shot in the catalogue. An id may come again after the highest row was removed.
using ShotID = std::int64_t;

/// One catalogued image or recording, exactly as a row of the catalogue reads. A plain value: two records with one id
/// and different notes are different values. All text is UTF-8, except that a file name may hold any bytes.
struct Shot {
  ShotID id = 0;                       ///< 0 until the shot was inserted
  std::string path;                    ///< absolute, unique in the catalogue
  std::string name;                    ///< last component of the path, with extension
  Timestamp date;                      ///< when it was taken: all order and all days go by this
  Timestamp added;                     ///< when the row was made
  std::int64_t bytes = 0;              ///< size of the file
  int width = 0;                       ///< pixels; 0 when unknown
  int height = 0;                      ///< pixels; 0 when unknown
  std::string appName;                 ///< display name of the source application; empty when unknown
  std::string captureType;             ///< "selection", "window", "display", another value, or empty
  bool filed = false;                  ///< lies in the library; false while it waits in the Inbox
  std::string ocr;                     ///< recognised text
  bool ocrDone = false;                ///< recognition has run, even if it found nothing
  std::string note;                    ///< the user's note
  std::vector<std::string> tags;       ///< in stored order; "project:<name>" marks membership of a project
  bool favorite = false;               ///< starred by the user
  std::vector<std::string> sensitive;  ///< kinds of sensitive data found; empty when none
  std::int64_t phash = 0;              ///< perceptual hash; 0 until there is one
  std::vector<std::string> barcodes;   ///< payloads of the codes found
  std::string bundleID;                ///< identifier of the source application; empty when unknown
  std::string shownName;               ///< the user's word for the source; empty when none
  bool appAttributionTrusted = false;  ///< `appName` comes from a source that is believed

  bool operator==(const Shot&) const = default;

  /// "Selection", "Window", "Full Screen", or "Image" for any other capture type.
  [[nodiscard]] std::string_view captureTypeLabel() const;

  /// The name of the icon for the capture type.
  [[nodiscard]] std::string_view symbol() const;

  /// "1440 × 900"; absent unless both lengths are known.
  [[nodiscard]] std::optional<std::string> pixels() const;

  /// The first line of the text that is not blank, trimmed; else empty. Borrows from the shot.
  [[nodiscard]] std::string_view ocrHeadline() const;

  /// The longest of the first eight lines that have more than three characters, the earlier one where two are equal;
  /// `ocrHeadline` when there is none. Borrows from the shot.
  [[nodiscard]] std::string_view titleGuess() const;
};

/// Whether both are states of one row: an id may come again after its row is gone.
[[nodiscard]] inline bool isSameRow(const Shot& one, const Shot& other) {
  return one.id == other.id && one.added == other.added;
}

/// A shot of a snapshot. Snapshots share the rows that did not change between them, so one pointer means one value.
/// Never null; immutable, and so safe in any thread.
using ShotPtr = std::shared_ptr<const Shot>;
using ShotList = std::vector<ShotPtr>;

/// What stands before the name in the tag that marks membership of a project.
inline constexpr std::string_view projectTagPrefix = "project:";

}  // namespace Nimbrel
