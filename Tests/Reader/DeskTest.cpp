#include "Reader/Desk.h"

#include "Support/CodePictures.h"
#include "Support/TemporaryFolder.h"

#include <QPainter>

#include <gmock/gmock.h>

namespace Nimbrel::Reader {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Wanted = PictureReader::Wanted;

class DeskTest : public ::testing::Test {
 protected:
  /// A page with a line of text and a code, saved as a PNG file.
  std::string page(QImage::Format format = QImage::Format_RGB32) const {
    QImage image(700, 400, format);
    image.fill(format == QImage::Format_RGB32 ? Qt::white : Qt::transparent);
    QPainter painter(&image);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(20);
    painter.setFont(font);
    painter.drawText(30, 60, QStringLiteral("Departure from Hamburg at noon"));
    painter.drawImage(300, 150, Testing::codePicture(ZXing::BarcodeFormat::QRCode, "mail@example.org"));
    painter.end();
    const auto path = folder_.path("page.png");
    EXPECT_TRUE(image.save(QString::fromStdString(path)));
    return path;
  }

  std::string textOf(const PictureReading& reading) const {
    std::string text;
    for (const auto& block : reading.blocks) text += block.text + '\n';
    return text;
  }

  Testing::TemporaryFolder folder_;
  Desk desk_;
};

TEST_F(DeskTest, AnswersWithTextAndCodes) {
  const auto reading = desk_.answer({page(), Wanted::TextAndCodes, {"eng"}});
  ASSERT_TRUE(reading);
  EXPECT_THAT(reading->codes, ElementsAre("mail@example.org"));
  EXPECT_EQ(textOf(*reading), "Departure from Hamburg at noon\n") << "and nothing that was read into the code";
}

TEST_F(DeskTest, AnswersWithNoMoreThanWasAskedFor) {
  const auto text = desk_.answer({page(), Wanted::Text, {"eng"}});
  ASSERT_TRUE(text);
  EXPECT_THAT(text->codes, IsEmpty());
  EXPECT_EQ(textOf(*text), "Departure from Hamburg at noon\n");
  const auto codes = desk_.answer({page(), Wanted::Codes, {"eng"}});
  ASSERT_TRUE(codes);
  EXPECT_THAT(codes->codes, ElementsAre("mail@example.org"));
  EXPECT_THAT(codes->blocks, IsEmpty());
}

TEST_F(DeskTest, ReadsWhatStandsOnNothingAsOnWhite) {
  const auto reading = desk_.answer({page(QImage::Format_ARGB32), Wanted::TextAndCodes, {"eng"}});
  ASSERT_TRUE(reading);
  EXPECT_THAT(reading->codes, ElementsAre("mail@example.org"));
  EXPECT_THAT(textOf(*reading), HasSubstr("Departure from Hamburg"));
}

TEST_F(DeskTest, ReadsInALanguageThatIsInstalledWhenNoneOfThoseWantedIs) {
  const auto reading = desk_.answer({page(), Wanted::Text, {"xxx", "osd", "equ"}});
  ASSERT_TRUE(reading);
  EXPECT_THAT(reading->blocks, Not(IsEmpty()));
}

TEST_F(DeskTest, AnswersWithNothingForWhatIsNoWholePicture) {
  const auto whole = Testing::contentOf(page());
  const auto half = folder_.write("half.png", whole.substr(0, whole.size() / 2));
  for (const auto& path : {half, folder_.write("text.png", "no picture"), folder_.write("empty.png", ""),
                           folder_.path("missing.png"), folder_.path()}) {
    EXPECT_EQ(desk_.answer({path, Wanted::TextAndCodes, {"eng"}}), std::optional(PictureReading())) << path;
  }
}

}  // namespace
}  // namespace Nimbrel::Reader
