#pragma once

#include "Foundation/Timestamp.h"

#include <string>
#include <string_view>

namespace Nimbrel {

/// An appointment that a shot speaks of, as calendar applications take it in. A value; any thread.
struct CalendarEvent {
  std::string title;       ///< what the shot seems to be about; empty when it does not say
  std::string shotName;    ///< name of its file, which may hold any bytes
  std::string identifier;  ///< no other event has it
  Timestamp start;         ///< it lasts an hour from then
  Timestamp made;          ///< the present moment

  /// The text of an iCalendar file with this one event, in UTF-8: lines end in a bare line feed and are not folded, the
  /// last has no end. Commas are escaped and nothing else is; a line feed within a line becomes a blank.
  [[nodiscard]] std::string iCalendar() const;
};

}  // namespace Nimbrel
