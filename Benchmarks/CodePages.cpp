#include "CodePages.h"

#include "Support/CodePictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <random>

namespace Nimbrel::Benchmarks {

namespace {

using Format = ZXing::BarcodeFormat;
using Random = std::mt19937;

struct Sample {
  Format format;
  const char* kind;
  const char* payload;
  const char* expected = nullptr;  ///< where not all of it is payload
};

constexpr std::array samples{
    Sample{Format::QRCode, "QR Code", "https://tickets.example.org/7f3a-9921"},
    Sample{Format::QRCode, "QR Code",
           "BEGIN:VCARD\nVERSION:3.0\nN:Lindqvist;Maja\nTEL:+46 8 555 0142\nEMAIL:maja@example.org\nORG:Harbour & "
           "Sons\nEND:VCARD"},
    Sample{Format::QRCode, "QR Code", "WIFI:T:WPA;S:Café Zürich;P:k7!pQ2#x;;"},
    Sample{Format::Aztec, "Aztec", "M1LINDQVIST/MAJA  EABC123 ARNFRALH 0847 265Y014C0057 100"},
    Sample{Format::Aztec, "Aztec", "TRAIN 4711"},
    Sample{Format::DataMatrix, "Data Matrix", "010460043993125621JgXJ5.T"},
    Sample{Format::DataMatrix, "Data Matrix", "PART 99-1834 LOT 20A REV C SN 000118274401"},
    Sample{Format::PDF417, "PDF417", "Boarding pass 0847, seat 14C, gate B22, group 3"},
    Sample{Format::Code128, "Code 128", "1Z999AA10123456784"},
    Sample{Format::Code128, "Code 128", "PKG-2041-XK"},
    Sample{Format::Code39, "Code 39", "ASSET-00417"},
    Sample{Format::EAN13, "EAN-13", "4006381333931"},
    Sample{Format::EAN8, "EAN-8", "96385074"},
    Sample{Format::UPCA, "UPC-A", "036000291452"},
    Sample{Format::UPCE, "UPC-E", "01234565"},
    Sample{Format::ITF, "ITF", "15400141288763"},
    Sample{Format::Codabar, "Codabar", "A40156B", "40156"},
};

/// How a code is drawn; each sample goes through all of them.
struct Manner {
  const char* name;
  double module;  ///< at scale 1
  int scale;
  bool lightOnDark = false;
  bool dots = false;
  bool coloured = false;
  bool logo = false;
};

constexpr std::array manners{
    Manner{"2 px", 2, 1},
    Manner{"3 px", 3, 1},
    Manner{"6 px", 6, 1},
    Manner{"2 px at 2x", 2, 2},
    Manner{"4 px at 2x", 4, 2},
    Manner{"2.7 px, scaled", 2.7, 1},
    Manner{"3 px, light on dark", 3, 1, true},
    Manner{"2 px at 2x, light on dark", 2, 2, true},
    Manner{"4 px, coloured", 4, 1, false, false, true},
    Manner{"5 px, dots and logo", 5, 1, false, true, false, true},
};

bool isLinear(Format format) { return ZXing::BarcodeFormats(Format::LinearCodes).testFlag(format); }

int upTo(Random& random, int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

QImage withDots(const QImage& code, int module) {
  QImage image(code.size(), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::black);
  painter.setPen(Qt::NoPen);
  for (int y = module / 2; y < code.height(); y += module) {
    for (int x = module / 2; x < code.width(); x += module) {
      if (qGray(code.pixel(x, y)) > 127) continue;
      painter.drawEllipse(QPointF(x + .5, y + .5), module * .5, module * .5);
    }
  }
  return image;
}

void addLogo(QImage& code) {
  QPainter painter(&code);
  painter.setRenderHint(QPainter::Antialiasing);
  const double side = code.width() * .16;
  const QRectF box((code.width() - side) / 2, (code.height() - side) / 2, side, side);
  painter.fillRect(box, Qt::white);
  painter.setBrush(QColor(30, 110, 220));
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(box.adjusted(2, 2, -2, -2));
}

QImage drawn(const Sample& sample, const Manner& manner) {
  Testing::CodeLook look;
  // Readers want a wider quiet zone of linear codes.
  look.quietModules = isLinear(sample.format) ? 10 : 4;
  // A logo covers what the code has to make up for.
  if (manner.logo && sample.format == Format::QRCode) look.errorCorrection = 8;
  if (manner.coloured) {
    look.dark = QColor(22, 60, 120);
    look.light = QColor(250, 240, 215);
  }
  if (manner.lightOnDark) {
    look.dark = QColor(240, 240, 242);
    look.light = QColor(24, 25, 28);
  }
  const double module = manner.module * manner.scale;
  const int whole = static_cast<int>(module);
  if (module == whole) {
    look.module = whole;
    auto image = Testing::codePicture(sample.format, sample.payload, look);
    if (manner.dots && sample.format == Format::QRCode) image = withDots(image, whole);
    if (manner.logo && sample.format == Format::QRCode) addLogo(image);
    return image;
  }
  look.module = 8;
  const auto image = Testing::codePicture(sample.format, sample.payload, look);
  return image.scaled(image.size() * (module / 8), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QString words(Random& random, int count) {
  QString text;
  for (int i = 0; i < count; ++i) {
    for (int letters = 2 + upTo(random, 9); letters > 0; --letters) text += QChar(u'a' + upTo(random, 26));
    text += QLatin1Char(' ');
  }
  return text;
}

struct Colours {
  QColor paper;
  QColor ink;
  QColor panel;
};

constexpr QSize pageSize(1440, 900);

void drawText(QPainter& painter, const QRect& area, int pixels, const Colours& colours, Random& random) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(pixels);
  painter.setFont(font);
  painter.setPen(colours.ink);
  painter.setClipRect(area);
  const int step = pixels * 3 / 2;
  for (int y = area.top(); y + step <= area.bottom(); y += step) {
    if (upTo(random, 9) == 0) continue;
    painter.drawText(QRect(area.left(), y, area.width(), step), Qt::AlignVCenter | Qt::TextSingleLine,
                     words(random, 6 + upTo(random, 16)));
  }
  painter.setClipping(false);
}

void drawPhotograph(QPainter& painter, const QRect& area, Random& random) {
  QLinearGradient sky(area.topLeft(), area.bottomLeft());
  sky.setColorAt(0, QColor::fromHsv(upTo(random, 360), 120, 230));
  sky.setColorAt(1, QColor::fromHsv(upTo(random, 360), 200, 70));
  painter.fillRect(area, sky);
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < 900; ++i) {
    painter.setBrush(QColor::fromHsv(upTo(random, 360), 60 + upTo(random, 150), 40 + upTo(random, 200), 110));
    const int size = 3 + upTo(random, 40);
    painter.drawEllipse(area.left() + upTo(random, area.width()), area.top() + upTo(random, area.height()), size,
                        size / 2 + 1);
  }
}

/// A grid of small numbers, which is what looks most like a code without being one.
void drawSheet(QPainter& painter, const QRect& area, const Colours& colours, Random& random) {
  QFont font(QStringLiteral("DejaVu Sans Mono"));
  font.setPixelSize(11);
  painter.setFont(font);
  for (int y = area.top(); y + 20 < area.bottom(); y += 20) {
    for (int x = area.left(); x + 72 < area.right(); x += 72) {
      painter.setPen(QColor(128, 128, 128, 120));
      painter.drawRect(x, y, 72, 20);
      painter.setPen(colours.ink);
      painter.drawText(QRect(x, y, 68, 20), Qt::AlignRight | Qt::AlignVCenter,
                       QString::number(upTo(random, 90000) / 100.0, 'f', 2));
    }
  }
}

/// Icons, hatching and bars: patterns of the kind that a finder might take for codes.
void drawPatterns(QPainter& painter, const QRect& area, const Colours& colours, Random& random) {
  painter.setPen(Qt::NoPen);
  for (int x = area.left(); x < area.right(); x += 5 + upTo(random, 8)) {
    painter.fillRect(x, area.top(), 2 + upTo(random, 4), area.height() / 4, colours.ink);
  }
  const QRect board(area.left(), area.top() + area.height() / 3, 320, 320);
  for (int i = 0; i < 64 * 64; ++i) {
    if (upTo(random, 2) == 0) continue;
    painter.fillRect(board.left() + i % 64 * 5, board.top() + i / 64 * 5, 5, 5, colours.ink);
  }
  painter.fillRect(board.translated(380, 0), QBrush(colours.ink, Qt::Dense4Pattern));
  painter.fillRect(board.translated(740, 0), QBrush(colours.ink, Qt::DiagCrossPattern));
}

enum class Content { Text, SmallText, Sheet, Photograph, Patterns };

QImage page(Content content, bool dark, int scale, Random& random) {
  const Colours colours = dark ? Colours{QColor(24, 25, 28), QColor(210, 212, 218), QColor(40, 42, 47)}
                               : Colours{QColor(255, 255, 255), QColor(35, 36, 42), QColor(241, 242, 245)};
  QImage image(pageSize * scale, QImage::Format_RGB32);
  image.fill(colours.paper);
  QPainter painter(&image);
  painter.scale(scale, scale);
  painter.fillRect(QRect(0, 0, 240, pageSize.height()), colours.panel);
  drawText(painter, {12, 12, 220, pageSize.height() - 24}, 13, colours, random);
  const QRect body(264, 16, pageSize.width() - 280, pageSize.height() - 32);
  switch (content) {
    case Content::Text:
      drawText(painter, body, 15, colours, random);
      break;
    case Content::SmallText:
      drawText(painter, body, 10, colours, random);
      break;
    case Content::Sheet:
      drawSheet(painter, body, colours, random);
      break;
    case Content::Photograph:
      drawPhotograph(painter, body, random);
      break;
    case Content::Patterns:
      drawPatterns(painter, body, colours, random);
      break;
  }
  return image;
}

constexpr std::array contents{Content::Text, Content::SmallText, Content::Sheet, Content::Photograph};

/// Where the code can stand without touching those that are there, by chance; an empty rectangle when there is no room.
QRect freePlace(QSize size, const CodePage& page, Random& random) {
  const QSize room = page.picture.size() - size - QSize(32, 32);
  if (room.width() <= 0 || room.height() <= 0) return {};
  for (int attempt = 0; attempt < 60; ++attempt) {
    const QRect place(QPoint(16 + upTo(random, room.width()), 16 + upTo(random, room.height())), size);
    const auto around = place.adjusted(-12, -12, 12, 12);
    if (std::ranges::none_of(page.codes, [&](const auto& code) { return code.box.intersects(around); })) return place;
  }
  return {};
}

bool put(const Sample& sample, const Manner& manner, CodePage& page, Random& random) {
  const auto code = drawn(sample, manner);
  const auto place = freePlace(code.size(), page, random);
  if (place.isEmpty()) return false;
  QPainter(&page.picture).drawImage(place.topLeft(), code);
  page.codes.push_back(
      {sample.kind, sample.expected ? sample.expected : sample.payload, place, manner.name, isLinear(sample.format)});
  return true;
}

/// One to three codes a page, all drawn in the same manner.
void addPages(const Manner& manner, std::vector<CodePage>& pages, Random& random) {
  std::size_t next = 0;
  while (next < samples.size()) {
    const auto content = contents[pages.size() % contents.size()];
    CodePage made{page(content, manner.lightOnDark || upTo(random, 3) == 0, manner.scale, random), {}};
    const int count = 1 + upTo(random, 3);
    for (int i = 0; i < count && next < samples.size(); ++i) {
      if (!put(samples[next], manner, made, random)) break;
      ++next;
    }
    if (made.codes.empty()) ++next;
    pages.push_back(std::move(made));
  }
}

}  // namespace

std::vector<CodePage> codePages() {
  Random random(20240607);
  std::vector<CodePage> pages;
  for (const auto& manner : manners) addPages(manner, pages, random);
  for (const auto content :
       {Content::Text, Content::SmallText, Content::Sheet, Content::Photograph, Content::Patterns}) {
    for (const bool dark : {false, true}) {
      for (const int scale : {1, 2}) pages.push_back({page(content, dark, scale, random), {}});
    }
  }
  return pages;
}

}  // namespace Nimbrel::Benchmarks
