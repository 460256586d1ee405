#pragma once

#include "Samples/Canvas.h"

#include <QDateTime>

/// One function for each picture of the library. Each fills the whole canvas, and writes dates as of the occasion.
namespace Nimbrel::Samples {

struct Occasion {
  QDateTime taken;
  /// 0 for the picture itself; higher numbers for the same window a moment later, where a picture knows of such.
  int variant = 0;
};

void drawArticle(Canvas& canvas, const Occasion& occasion);
void drawBuildTerminal(Canvas& canvas, const Occasion& occasion);
void drawCalendar(Canvas& canvas, const Occasion& occasion);
void drawChat(Canvas& canvas, const Occasion& occasion);
void drawDarkEditor(Canvas& canvas, const Occasion& occasion);
void drawDashboard(Canvas& canvas, const Occasion& occasion);
void drawErrorDialog(Canvas& canvas, const Occasion& occasion);
void drawFileList(Canvas& canvas, const Occasion& occasion);
void drawGroupChat(Canvas& canvas, const Occasion& occasion);
void drawInvoice(Canvas& canvas, const Occasion& occasion);
void drawIssueBoard(Canvas& canvas, const Occasion& occasion);
void drawLandscape(Canvas& canvas, const Occasion& occasion);
void drawLightEditor(Canvas& canvas, const Occasion& occasion);
void drawMail(Canvas& canvas, const Occasion& occasion);
void drawMap(Canvas& canvas, const Occasion& occasion);
void drawPriceTable(Canvas& canvas, const Occasion& occasion);
void drawReceipt(Canvas& canvas, const Occasion& occasion);
void drawSecretsForm(Canvas& canvas, const Occasion& occasion);
void drawServerTerminal(Canvas& canvas, const Occasion& occasion);
void drawSettings(Canvas& canvas, const Occasion& occasion);
void drawSpreadsheet(Canvas& canvas, const Occasion& occasion);
void drawStackTrace(Canvas& canvas, const Occasion& occasion);
void drawTicketPage(Canvas& canvas, const Occasion& occasion);

}  // namespace Nimbrel::Samples
