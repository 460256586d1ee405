#pragma once

#include "Foundation/Timestamp.h"

#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel {

/// What the name of a filed shot is made of.
struct LibraryNameParts {
  std::string_view application;  ///< title of the application; may be empty
  std::string_view title;        ///< what the shot shows; may be empty
  Timestamp date;
  std::string_view extension;  ///< without its dot
};

/// "Safari — Invoice for March — 2026-03-02.png", with what there is of application and title; absent when there is
/// neither. Never longer than a name can be, never hidden, and a name only: no folder arises from a slash. Pure but for
/// the time zone.
[[nodiscard]] std::optional<std::string> libraryName(const LibraryNameParts& parts);

}  // namespace Nimbrel
