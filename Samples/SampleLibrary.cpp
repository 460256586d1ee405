#include "Samples/SampleLibrary.h"

#include "Samples/Words.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

constexpr QStringView selection = u"selection";
constexpr QStringView windowOnly = u"window";
constexpr QStringView display = u"display";

/// The time of a picture of today says how far into the day it was taken, as a share of what has passed of it, for the
/// day may be young.
QTime share(double part) { return QTime(0, 0).addMSecs(static_cast<int>(part * 1000)); }

const std::array<Sample, 26>& table() {
  using enum Place;
  static const std::array<Sample, 26> rows{{
      {drawChat, 0, {760, 820}, 1, 0, share(0.58), desktop, windowOnly},
      {drawErrorDialog, 0, {521, 233}, 1, 0, share(0.86), desktop, selection},
      {drawBuildTerminal, 0, {900, 600}, 1, 1, {16, 20, 7}, desktop, windowOnly},
      {drawBuildTerminal, 1, {900, 600}, 1, 1, {16, 21, 33}, desktop, windowOnly},
      {drawLightEditor, 0, {1440, 900}, 1, 2, {10, 15, 12}, desktop, display},
      {drawLightEditor, 1, {1440, 900}, 1, 2, {10, 15, 42}, desktop, display},
      {drawLightEditor, 2, {1440, 900}, 1, 2, {10, 17, 5}, desktop, display},
      {drawStackTrace, 0, {900, 600}, 1, 4, {14, 2, 51}, desktop, windowOnly},
      {drawSecretsForm, 0, {620, 640}, 1, 5, {11, 36, 18}, desktop, windowOnly},
      {drawTicketPage, 0, {960, 680}, 1, 7, {20, 8, 44}, desktop, windowOnly},
      {drawReceipt, 0, {397, 527}, 1, 9, {8, 52, 26}, desktop, selection},
      {drawSpreadsheet, 0, {1440, 900}, 1, 12, {15, 27, 9}, desktop, display},
      {drawIssueBoard, 0, {1440, 900}, 2, 15, {9, 4, 58}, desktop, display},
      {drawMap, 0, {760, 560}, 1, 19, {12, 11, 31}, desktop, selection},
      {drawSettings, 0, {700, 530}, 1, 24, {18, 45, 2}, desktop, windowOnly},
      {drawMail, 0, {1040, 700}, 1, 30, {13, 33, 47}, desktop, windowOnly},
      {drawPriceTable, 0, {413, 287}, 1, 37, {10, 58, 20}, desktop, selection},
      {drawInvoice, 0, {842, 723}, 1, 3, {9, 22, 16}, library, u"Invoice BP-20417 Brindlewick Paper"},
      {drawArticle, 0, {1440, 900}, 2, 6, {21, 13, 40}, library, u"The mill that waited for the moon"},
      {drawDarkEditor, 0, {900, 600}, 1, 10, {16, 49, 55}, library, u"harvest.py collect loop"},
      {drawCalendar, 0, {1183, 816}, 1, 14, {8, 17, 3}, library, u"Calendar overview"},
      {drawFileList, 0, {880, 560}, 1, 20, {17, 6, 37}, library, u"Studio folder before the backup"},
      {drawGroupChat, 0, {680, 720}, 1, 26, {11, 58, 29}, library, u"Release room go-ahead"},
      {drawLandscape, 0, {1200, 750}, 1, 31, {19, 24, 14}, library, u"Valley at dusk"},
      {drawServerTerminal, 0, {840, 480}, 1, 36, {7, 31, 8}, library, u"Backup disk usage on heron"},
      {drawDashboard, 0, {1280, 720}, 1, 40, {10, 40, 50}, library, u"Shop figures of the month"},
  }};
  return rows;
}

}  // namespace

std::span<const Sample> samples() { return table(); }

QDateTime dateOf(const Sample& sample, const QDateTime& now) {
  const auto day = now.date().addDays(-sample.daysBefore);
  if (sample.daysBefore > 0) return {day, sample.time};
  const auto midnight = day.startOfDay();
  const auto passed = std::max<qint64>(midnight.secsTo(now), 60);
  return midnight.addSecs(passed * sample.time.msecsSinceStartOfDay() / 1000);
}

QString pathOf(const Sample& sample, const QDateTime& taken) {
  if (sample.place == Place::desktop) {
    return desktopFolder() + words(taken, u"'/Screenshot 'yyyy-MM-dd' at 'HH.mm.ss'.png'");
  }
  return libraryFolder() + words(taken, u"/yyyy/yyyy-MM/") + sample.words.toString() +
         words(taken, u"' — 'yyyy-MM-dd'.png'");
}

QString desktopFolder() { return u"Desktop"_s; }

QString libraryFolder() { return u"Pictures/Nimbrel"_s; }

}  // namespace Nimbrel::Samples
