#include "Reader/CodeFinder.h"

#include "Support/CodePictures.h"
#include "Support/Pictures.h"

#include <BitMatrix.h>
#include <CharacterSet.h>
#include <MultiFormatWriter.h>

#include <QPainter>
#include <QTransform>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Nimbrel::Reader {
namespace {

using Testing::codePicture;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::onPage;
using ::testing::UnorderedElementsAre;
using Format = ZXing::BarcodeFormat;

constexpr QSize page(1000, 700);

std::vector<std::string> payloads(const QImage& picture) {
  std::vector<std::string> texts;
  for (const auto& code : findCodes(picture)) texts.push_back(code.payload);
  return texts;
}

struct Drawn {
  Format format;
  const char* name;
  const char* text;
  const char* payload;
};

class EachKind : public ::testing::TestWithParam<Drawn> {
 protected:
  static QImage code(const Testing::CodeLook& look = {}) {
    return codePicture(GetParam().format, GetParam().text, look);
  }
};

TEST_P(EachKind, IsReadOffThePage) {
  const auto codes = findCodes(onPage(code({.module = 3, .quietModules = 10}), page));
  ASSERT_EQ(codes.size(), 1U);
  EXPECT_EQ(codes[0].payload, GetParam().payload);
}

TEST_P(EachKind, IsReadOffTheCornerOfThePage) {
  QImage image(page, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter(&image).drawImage(20, 20, code({.module = 2, .quietModules = 10}));
  EXPECT_THAT(payloads(image), ElementsAre(GetParam().payload));
}

TEST_P(EachKind, IsReadLightOnDark) {
  const QColor ground(24, 25, 28);
  const auto image = code({.module = 3, .dark = QColor(235, 235, 240), .light = ground, .quietModules = 10});
  EXPECT_THAT(payloads(onPage(image, page, ground)), ElementsAre(GetParam().payload));
}

TEST_P(EachKind, IsReadInAllFourDirections) {
  for (const int degrees : {90, 180, 270}) {
    const auto turned = code({.module = 3, .quietModules = 10}).transformed(QTransform().rotate(degrees));
    EXPECT_THAT(payloads(onPage(turned, page)), ElementsAre(GetParam().payload)) << degrees;
  }
}

TEST_P(EachKind, HasABoxInsideItsQuietZone) {
  const auto image = code({.module = 3, .quietModules = 10});
  const QRect place(QPoint((page.width() - image.width()) / 2, (page.height() - image.height()) / 2), image.size());
  const auto codes = findCodes(onPage(image, page));
  ASSERT_EQ(codes.size(), 1U);
  EXPECT_TRUE(place.contains(codes[0].box));
  EXPECT_GT(codes[0].box.width(), (place.width() - 60) / 2);
}

INSTANTIATE_TEST_SUITE_P(
    CodeFinder, EachKind,
    ::testing::Values(Drawn{Format::QRCode, "QrCode", "https://example.org/a?b=1", "https://example.org/a?b=1"},
                      Drawn{Format::Aztec, "Aztec", "TRAIN 4711, coach 8", "TRAIN 4711, coach 8"},
                      Drawn{Format::DataMatrix, "DataMatrix", "PART 99-1834 LOT 20A", "PART 99-1834 LOT 20A"},
                      Drawn{Format::PDF417, "Pdf417", "Flight 0847 seat 14C", "Flight 0847 seat 14C"},
                      Drawn{Format::Code128, "Code128", "PKG-2041-xk", "PKG-2041-xk"},
                      Drawn{Format::Code39, "Code39", "ASSET-00417", "ASSET-00417"},
                      Drawn{Format::EAN13, "Ean13", "4006381333931", "4006381333931"},
                      Drawn{Format::EAN8, "Ean8", "96385074", "96385074"},
                      Drawn{Format::UPCA, "UpcA", "036000291452", "036000291452"},
                      Drawn{Format::UPCE, "UpcE", "01234565", "01234565"},
                      Drawn{Format::ITF, "Itf", "15400141288763", "15400141288763"},
                      Drawn{Format::Codabar, "Codabar", "A40156B", "40156"}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

/// The pictures side by side on a white page.
QImage sideBySide(const std::vector<QImage>& pictures) {
  QImage image(page, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  int x = 20;
  for (const auto& picture : pictures) {
    painter.drawImage(x, 60, picture);
    x += picture.width() + 30;
  }
  return image;
}

TEST(CodeFinder, FindsSeveralCodesOfOneKind) {
  std::vector<QImage> codes;
  for (const auto* text : {"first", "second", "third"}) codes.push_back(codePicture(Format::QRCode, text));
  EXPECT_THAT(payloads(sideBySide(codes)), UnorderedElementsAre("first", "second", "third"));
}

TEST(CodeFinder, FindsSeveralOfTheKindsThatAreSearchedForOneByOne) {
  const auto image = sideBySide({codePicture(Format::Aztec, "one"), codePicture(Format::Aztec, "two"),
                                 codePicture(Format::DataMatrix, "three"), codePicture(Format::DataMatrix, "four")});
  EXPECT_THAT(payloads(image), UnorderedElementsAre("one", "two", "three", "four"));
}

TEST(CodeFinder, FindsBothPolaritiesInOnePicture) {
  const auto image = sideBySide({codePicture(Format::QRCode, "dark"),
                                 codePicture(Format::QRCode, "light", {.dark = Qt::white, .light = Qt::black})});
  EXPECT_THAT(payloads(image), UnorderedElementsAre("dark", "light"));
}

TEST(CodeFinder, FindsEachOfTwoIdenticalCodes) {
  const auto code = codePicture(Format::QRCode, "https://example.org");
  EXPECT_THAT(payloads(sideBySide({code, code})), ElementsAre("https://example.org", "https://example.org"));
}

TEST(CodeFinder, ReadsTextInAnyScript) {
  EXPECT_THAT(payloads(onPage(codePicture(Format::QRCode, "Zürich 東京 €5"), page)), ElementsAre("Zürich 東京 €5"));
}

TEST(CodeFinder, ReadsACodeTurnedByAnyAngle) {
  const auto code = codePicture(Format::QRCode, "turned", {.module = 6});
  for (const int degrees : {10, 33, 57}) {
    const auto turned = code.transformed(QTransform().rotate(degrees), Qt::SmoothTransformation);
    QImage image(page, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).drawImage(300, 200, turned);
    EXPECT_THAT(payloads(image), ElementsAre("turned")) << degrees;
  }
}

TEST(CodeFinder, GivesACodeOfBytesNoPayload) {
  ZXing::MultiFormatWriter writer(Format::QRCode);
  writer.setEncoding(ZXing::CharacterSet::BINARY);
  const auto modules = writer.encode(std::wstring(L"\x01\x02\x80\xFF\x00\x13", 6), 0, 0);
  QImage code(modules.width(), modules.height(), QImage::Format_RGB32);
  for (int y = 0; y < code.height(); ++y) {
    for (int x = 0; x < code.width(); ++x) code.setPixel(x, y, modules.get(x, y) ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
  }
  EXPECT_THAT(payloads(onPage(code.scaled(code.size() * 4), page)), ElementsAre(""));
}

/// Lines of words, as much as there is room for.
void drawText(QImage& image, int pixels, const QColor& ink) {
  QPainter painter(&image);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(pixels);
  painter.setFont(font);
  painter.setPen(ink);
  for (int y = pixels; y < image.height(); y += pixels * 5 / 4) {
    painter.drawText(4 + y % 7, y,
                     QStringLiteral("illicit ||||| 11111 %1 minimum lllll the quick brown fox %2 IIII HHH")
                         .arg(y * 7919)
                         .repeated(3));
  }
}

TEST(CodeFinder, FindsNoCodeInText) {
  for (const int pixels : {8, 11, 16, 40}) {
    QImage light(page, QImage::Format_RGB32);
    light.fill(Qt::white);
    drawText(light, pixels, Qt::black);
    EXPECT_THAT(payloads(light), IsEmpty()) << pixels;
    QImage dark(page, QImage::Format_RGB32);
    dark.fill(QColor(20, 20, 24));
    drawText(dark, pixels, QColor(220, 220, 220));
    EXPECT_THAT(payloads(dark), IsEmpty()) << pixels;
  }
}

TEST(CodeFinder, FindsNoCodeInPatterns) {
  QImage image(page, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.fillRect(20, 20, 300, 300, QBrush(Qt::Dense4Pattern));
  painter.fillRect(360, 20, 300, 300, QBrush(Qt::DiagCrossPattern));
  for (int i = 0; i < 60 * 60; ++i) {
    if (i * 2654435761U % 7 < 3) painter.fillRect(20 + i % 60 * 5, 360 + i / 60 * 5, 5, 5, Qt::black);
  }
  for (int x = 360; x < 900; x += 3 + x % 5) painter.fillRect(x, 360, 2, 200, Qt::black);
  painter.end();
  EXPECT_THAT(payloads(image), IsEmpty());
  EXPECT_THAT(payloads(Testing::picture(900, 600, 5)), IsEmpty());
}

TEST(CodeFinder, BearsPicturesOfAnySize) {
  EXPECT_THAT(findCodes(QImage()), IsEmpty());
  for (const QSize size : {QSize(1, 1), QSize(1, 4000), QSize(4000, 1), QSize(3, 3), QSize(5, 17), QSize(20000, 40)}) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    EXPECT_THAT(findCodes(image), IsEmpty()) << size.width() << " x " << size.height();
    drawText(image, 9, Qt::black);
    EXPECT_THAT(findCodes(image), IsEmpty()) << size.width() << " x " << size.height();
  }
}

TEST(CodeFinder, ReadsACodeInALongNarrowPicture) {
  const auto code = codePicture(Format::QRCode, "narrow");
  EXPECT_THAT(payloads(onPage(code, {8000, 200})), ElementsAre("narrow"));
  EXPECT_THAT(payloads(onPage(code, {200, 8000})), ElementsAre("narrow"));
}

TEST(CodeFinder, ReadsACodeThatFillsThePicture) {
  const auto code = codePicture(Format::QRCode, "large", {.module = 30});
  EXPECT_THAT(payloads(code), ElementsAre("large"));
}

}  // namespace
}  // namespace Nimbrel::Reader
