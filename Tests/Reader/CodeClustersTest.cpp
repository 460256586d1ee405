#include "Reader/CodeClusters.h"

#include "Support/CodePictures.h"

#include <QPainter>

#include <gmock/gmock.h>

namespace Nimbrel::Reader {
namespace {

using Testing::codePicture;
using ::testing::IsEmpty;
using Testing::onPage;
using ::testing::SizeIs;
using Format = ZXing::BarcodeFormat;

QImage grey(const QImage& image) { return image.convertToFormat(QImage::Format_Grayscale8); }

TEST(CodeClusters, AreTheSquareCodesOfAPage) {
  for (const int module : {2, 3, 4, 7, 8, 16}) {
    const auto code = codePicture(Format::DataMatrix, "PART 99-1834 LOT 20A", {.module = module});
    const auto clusters = codeClusters(grey(onPage(code, {900, 700})));
    ASSERT_THAT(clusters, SizeIs(1)) << module;
    const QRect place(QPoint((900 - code.width()) / 2, (700 - code.height()) / 2), code.size());
    EXPECT_TRUE(place.contains(clusters[0])) << module;
    EXPECT_GE(clusters[0].width(), place.width() - 8 * module - 8) << module;
  }
}

TEST(CodeClusters, AreNotTheWordsOfAPage) {
  QImage image(900, 700, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  QFont font(QStringLiteral("DejaVu Sans"));
  for (int y = 30, pixels = 9; y < 680; y += 2 * pixels, ++pixels) {
    font.setPixelSize(pixels);
    painter.setFont(font);
    painter.drawText(10, y,
                     QStringLiteral("The harbour office is open from seven to nine o'clock, except on Sundays."));
  }
  painter.end();
  EXPECT_THAT(codeClusters(grey(image)), IsEmpty());
}

TEST(CodeClusters, AreNoPlainOrFramedBoxes) {
  QImage image(400, 300, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.fillRect(20, 20, 100, 100, Qt::black);
  painter.drawRect(200, 20, 100, 100);
  painter.drawEllipse(200, 160, 100, 100);
  painter.end();
  EXPECT_THAT(codeClusters(grey(image)), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel::Reader
