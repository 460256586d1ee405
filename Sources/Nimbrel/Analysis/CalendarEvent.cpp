#include "Analysis/CalendarEvent.h"

#include "Foundation/Text.h"

#include <QDateTime>
#include <QString>

#include <chrono>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr Seconds duration = std::chrono::hours(1);
constexpr std::string_view summaryWithoutTitle = "Screenshot reminder";

/// The same in every locale and time zone.
std::string stamp(Timestamp moment) {
  const auto seconds = static_cast<qint64>(std::floor(secondsSince1970(moment)));
  return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toStdString();
}

std::string onOneLine(std::string_view text) {
  std::string line;
  for (const char character : text) {
    if (character == ',') line += '\\';
    line += character == '\n' ? ' ' : character;
  }
  return line;
}

}  // namespace

std::string CalendarEvent::iCalendar() const {
  // A name need not be valid UTF-8, but a calendar must.
  const auto name = Text::toUtf8(Text::toUtf16(shotName));
  return Text::joined(
      {
          "BEGIN:VCALENDAR",
          "VERSION:2.0",
          "PRODID:-//Nimbrel//Screenshot Event//EN",
          "BEGIN:VEVENT",
          "UID:" + identifier + "@" NIMBREL_EVENT_DOMAIN,
          "DTSTAMP:" + stamp(made),
          "DTSTART:" + stamp(start),
          "DTEND:" + stamp(start + duration),
          "SUMMARY:" + onOneLine(title.empty() ? summaryWithoutTitle : title),
          "DESCRIPTION:Created from " + onOneLine(name),
          "END:VEVENT",
          "END:VCALENDAR",
      },
      '\n');
}

}  // namespace Nimbrel
