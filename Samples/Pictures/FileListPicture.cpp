#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"
#include "Samples/Words.h"

#include <array>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

struct File {
  QStringView name;
  QStringView size;
  QStringView kind;
  int daysBefore;
};

constexpr std::array<File, 15> files{{{u"Catalog spring", u"14 items", u"Folder", 1},
                                      {u"Contracts", u"6 items", u"Folder", 9},
                                      {u"Photographs", u"238 items", u"Folder", 3},
                                      {u"address-list.csv", u"18.4 kB", u"Table", 12},
                                      {u"budget.gridleaf", u"96.1 kB", u"Sheet", 0},
                                      {u"cover-draft-3.svg", u"212 kB", u"Drawing", 2},
                                      {u"cover-final.pdf", u"1.8 MB", u"Document", 2},
                                      {u"delivery-note-BP-20417.pdf", u"74.0 kB", u"Document", 5},
                                      {u"fonts.zip", u"3.2 MB", u"Archive", 31},
                                      {u"interview-reyl.flac", u"48.7 MB", u"Audio", 17},
                                      {u"letterhead.odt", u"22.9 kB", u"Document", 40},
                                      {u"price-list.pdf", u"341 kB", u"Document", 8},
                                      {u"proofs-12-19.pdf", u"12.6 MB", u"Document", 1},
                                      {u"todo.txt", u"2.1 kB", u"Text", 0},
                                      {u"workshop-tools.md", u"4.7 kB", u"Text", 4}}};

void drawIcon(Canvas& canvas, QPointF place, bool folder, const Theme& theme) {
  if (folder) {
    canvas.panel({place.x(), place.y() + 1, 9, 5}, 2, QColor(0xd29a3a));
    canvas.panel({place.x(), place.y() + 4, 18, 12}, 2, QColor(0xe5b454));
  } else {
    canvas.panel({place.x() + 2, place.y(), 14, 17}, 2, theme.page, theme.muted);
    for (int line = 0; line < 3; ++line) {
      canvas.horizontal(place.x() + 5, place.x() + 13, place.y() + 5 + line * 3, theme.muted);
    }
  }
}

void drawColumns(Canvas& canvas, const QRectF& row, const std::array<QString, 4>& cells, const TextStyle& style) {
  canvas.textIn({row.left() + 44, row.top(), 260, row.height()}, cells[0], style);
  canvas.textIn({row.left() + 316, row.top(), 90, row.height()}, cells[1], style, Qt::AlignRight);
  canvas.textIn({row.left() + 430, row.top(), 110, row.height()}, cells[2], style);
  canvas.textIn({row.left() + 540, row.top(), 150, row.height()}, cells[3], style);
}

}  // namespace

void drawFileList(Canvas& canvas, const Occasion& occasion) {
  constexpr std::array<QStringView, 10> places{u"#PLACES",  u"Home",     u"Desktop", u"Documents", u"Downloads",
                                               u"Pictures", u"#DEVICES", u"Archive", u"#NETWORK",  u"heron"};
  constexpr qreal rowHeight = 31;
  const auto& theme = lightTheme();
  auto page = window(canvas, canvas.bounds(), u"Studio - Files", theme);
  page = statusBar(canvas, page, u"15 items, 1 selected (12.6 MB)", u"61.3 GB free", theme);
  const auto body = sidebar(canvas, page, 160, places, 3, theme);
  QRectF row(body.left(), body.top(), body.width(), rowHeight);
  drawColumns(canvas, row, {u"Name"_s, u"Size"_s, u"Kind"_s, u"Changed"_s},
              {.size = 12, .color = theme.muted, .weight = Weight::bold});
  canvas.horizontal(row.left(), row.right(), row.bottom() - 1, theme.line);
  for (const auto& file : files) {
    row.translate(0, rowHeight);
    if (file.name.startsWith(u"proofs")) canvas.fill(row, theme.selection);
    drawIcon(canvas, {row.left() + 16, row.top() + 7}, file.kind == u"Folder", theme);
    const auto changed = words(occasion.taken.addSecs(-60LL * (17 + 1437 * file.daysBefore)), u"MMM d, HH:mm");
    drawColumns(canvas, row, {file.name.toString(), file.size.toString(), file.kind.toString(), changed},
                {.size = 13, .color = theme.text});
  }
}

}  // namespace Nimbrel::Samples
