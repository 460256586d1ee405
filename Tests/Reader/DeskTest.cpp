#include "Reader/Desk.h"

#include "Support/CodePictures.h"
#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

#include <QBuffer>
#include <QPainter>
#include <QTransform>

#include <gmock/gmock.h>

namespace Nimbrel::Reader {
namespace {

using ::testing::ElementsAre;
using Testing::EnvironmentVariable;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using Testing::TemporaryFolder;
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

  TemporaryFolder folder_;
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

TEST_F(DeskTest, SaysNothingOfAPictureWhenTheModelDoesNotLoad) {
  const auto path = page();
  const auto doNotBegin = [] { ADD_FAILURE() << "the picture would be blamed"; };
  {
    const TemporaryFolder models;
    const EnvironmentVariable variable("TESSDATA_PREFIX", models.path());
    for (const auto& content : {std::string(), std::string("no model"), std::string(5000, '\0')}) {
      models.write("eng.traineddata", content);
      EXPECT_FALSE(desk_.answer({path, Wanted::TextAndCodes, {"eng"}}, doNotBegin));
    }
    EXPECT_TRUE(desk_.answer({path, Wanted::Codes, {"eng"}})) << "codes need no model";
  }
  const auto reading = desk_.answer({path, Wanted::Text, {"eng"}});
  ASSERT_TRUE(reading);
  EXPECT_EQ(textOf(*reading), "Departure from Hamburg at noon\n") << "once the model is whole";
}

TEST_F(DeskTest, TellsBeforeItLooksAtThePicture) {
  int told = 0;
  const auto reading = desk_.answer({folder_.path("page.png"), Wanted::Codes, {}}, [&] {
    ++told;
    static_cast<void>(page());
  });
  EXPECT_EQ(told, 1);
  ASSERT_TRUE(reading);
  EXPECT_THAT(reading->codes, ElementsAre("mail@example.org"));
}

TEST_F(DeskTest, PlacesTheTextOfATurnedPictureWhereItStandsUpright) {
  const auto upright = desk_.answer({page(), Wanted::Text, {"eng"}});
  QImage stored = QImage(QString::fromStdString(folder_.path("page.png"))).transformed(QTransform().rotate(-90));
  QBuffer jpeg;
  ASSERT_TRUE(stored.save(&jpeg, "JPG", 95));
  // A segment behind the first two bytes, which says that the picture is to be turned to the right.
  const QByteArray exif(
      "\xFF\xE1\0\x22"
      "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0\0\0\0\0",
      36);
  const auto path = folder_.write("turned.jpg", QByteArray(jpeg.data()).insert(2, exif).toStdString());
  const auto turned = desk_.answer({path, Wanted::Text, {"eng"}});
  ASSERT_TRUE(upright && turned);
  ASSERT_THAT(upright->blocks, SizeIs(1));
  ASSERT_THAT(turned->blocks, SizeIs(1));
  EXPECT_EQ(turned->blocks[0].text, "Departure from Hamburg at noon");
  const auto& expected = upright->blocks[0].rect;
  const auto& rect = turned->blocks[0].rect;
  constexpr double tolerance = .01;
  EXPECT_NEAR(rect.left(), expected.left(), tolerance);
  EXPECT_NEAR(rect.top(), expected.top(), tolerance);
  EXPECT_NEAR(rect.width(), expected.width(), tolerance);
  EXPECT_NEAR(rect.height(), expected.height(), tolerance);
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
