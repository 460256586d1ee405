#include "Analysis/CalendarEvent.h"

#include "Support/EnvironmentVariable.h"

#include <gmock/gmock.h>

namespace Nimbrel {

namespace {

using ::testing::HasSubstr;

CalendarEvent lunch() {
  using namespace std::chrono;
  return {.title = "Lunch",
          .shotName = "Screenshot 1.png",
          .identifier = "0A-1",
          .start = sys_days(2026y / March / 31) + Seconds(23.5 * 3600),
          .made = sys_days(2026y / March / 2) + Seconds(8 * 3600 + 5 * 60 + 9.9)};
}

TEST(CalendarEvent, IsOneEventOfAnHourInUniversalTime) {
  EXPECT_EQ(lunch().iCalendar(),
            "BEGIN:VCALENDAR\n"
            "VERSION:2.0\n"
            "PRODID:-//Nimbrel//Screenshot Event//EN\n"
            "BEGIN:VEVENT\n"
            "UID:0A-1@nimbrel.local\n"
            "DTSTAMP:20260302T080509Z\n"
            "DTSTART:20260331T233000Z\n"
            "DTEND:20260401T003000Z\n"
            "SUMMARY:Lunch\n"
            "DESCRIPTION:Created from Screenshot 1.png\n"
            "END:VEVENT\n"
            "END:VCALENDAR");
}

TEST(CalendarEvent, ReadsTheSameWhereverTheUserIs) {
  const auto text = lunch().iCalendar();
  const Testing::EnvironmentVariable zone("TZ", "Asia/Kolkata");
  const Testing::EnvironmentVariable locale("LC_ALL", "ar_EG.UTF-8");
  EXPECT_EQ(lunch().iCalendar(), text);
}

TEST(CalendarEvent, ACommaInATitleStandsBehindABackslash) {
  auto event = lunch();
  event.title = "Lunch, then tea";
  EXPECT_THAT(event.iCalendar(), HasSubstr("\nSUMMARY:Lunch\\, then tea\n"));
}

TEST(CalendarEvent, OtherSignsOfATitleStayAsTheyAre) {
  auto event = lunch();
  event.title = "a;b\\c:d";
  EXPECT_THAT(event.iCalendar(), HasSubstr("\nSUMMARY:a;b\\c:d\n"));
}

TEST(CalendarEvent, ALineFeedInATitleBecomesABlank) {
  auto event = lunch();
  event.title = "Lunch\n\nTea";
  EXPECT_THAT(event.iCalendar(), HasSubstr("\nSUMMARY:Lunch  Tea\n"));
}

TEST(CalendarEvent, WithoutATitleItIsAReminder) {
  auto event = lunch();
  event.title.clear();
  EXPECT_THAT(event.iCalendar(), HasSubstr("\nSUMMARY:Screenshot reminder\n"));
}

TEST(CalendarEvent, ACommaInANameStandsBehindABackslash) {
  auto event = lunch();
  event.shotName = "a,b,c.png";
  EXPECT_THAT(event.iCalendar(), HasSubstr("\nDESCRIPTION:Created from a\\,b\\,c.png\n"));
}

TEST(CalendarEvent, ANameAddsNoLines) {
  auto event = lunch();
  event.shotName = "a\nATTENDEE:b.png";
  EXPECT_THAT(event.iCalendar(), HasSubstr("\nDESCRIPTION:Created from a ATTENDEE:b.png\n"));
}

TEST(CalendarEvent, IsValidTextWhateverTheName) {
  auto event = lunch();
  event.shotName = "caf\xE9.png";
  EXPECT_THAT(event.iCalendar(), HasSubstr("\nDESCRIPTION:Created from caf\uFFFD.png\n"));
}

}  // namespace

}  // namespace Nimbrel
