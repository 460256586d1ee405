#pragma once

#include "Model/Models.h"

#include <QString>

#include <string>

namespace Nimbrel {

/// What the user has begun to write about a shot and not handed in. It outlives the fields, which are gone while the
/// shot is locked. A plain value; names and notes stay the bytes of the catalogue until the user changes them.
struct InspectorDrafts {
  std::string name;  ///< of the file
  std::string note;
  QString newTag;
  QString ocrQuery;  ///< what is looked for in the recognised text

  /// Another shot is shown: name and note become its own, whatever was written, and nothing is looked for any more.
  void load(const Shot& shot);
  /// The row of the same shot has changed: what the user has not touched follows it.
  void follow(const Shot& before, const Shot& now);

  bool operator==(const InspectorDrafts&) const = default;
};

}  // namespace Nimbrel
