#include "CtlFixture.h"

#include "Support/CodePictures.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::StartsWith;

class ReadCommandTest : public Testing::CtlFixture {};

TEST_F(ReadCommandTest, TellsTheCodesAndTheFactsOfAFileThatIsInNoCatalogue) {
  Testing::writePicture(Testing::codePicture(ZXing::BarcodeFormat::QRCode, "https://example.invalid/q"),
                        home_.path("code.png"));
  const auto reading = json({"read", "code.png"}).object();
  EXPECT_EQ(reading.value(QStringLiteral("codes")).toArray(), QJsonArray{QStringLiteral("https://example.invalid/q")});
  EXPECT_EQ(reading.value(QStringLiteral("text")).toString(), QString());
  EXPECT_TRUE(reading.value(QStringLiteral("blocks")).toArray().isEmpty());
  EXPECT_NE(reading.value(QStringLiteral("phash")).toString(), QStringLiteral("0"));
  EXPECT_GT(reading.value(QStringLiteral("width")).toInt(), 0);
  EXPECT_GT(reading.value(QStringLiteral("bytes")).toInteger(), 0);
  EXPECT_EQ(reading.value(QStringLiteral("captureType")).toString(), QString());
  EXPECT_TRUE(json({"list"}).array().isEmpty());
}

TEST_F(ReadCommandTest, AFileThatIsNoPictureHoldsNothing) {
  home_.addFile(home_.path("text.png"));
  const auto reading = json({"read", "text.png"}).object();
  EXPECT_EQ(reading.value(QStringLiteral("phash")).toString(), QStringLiteral("0"));
  EXPECT_EQ(reading.value(QStringLiteral("width")).toInt(), 0);
}

TEST_F(ReadCommandTest, AMissingFileFails) {
  const auto output = ctl({"read", "missing.png"});
  EXPECT_EQ(output.status, 1);
  EXPECT_THAT(output.errors, StartsWith("nimbrelctl: cannot read missing.png: "));
}

TEST_F(ReadCommandTest, ScanWaitsUntilEverythingIsWorkedOutWhenAsked) {
  Testing::writePicture(Testing::codePicture(ZXing::BarcodeFormat::QRCode, "mail ann@example.com"),
                        home_.desktop("Screenshot 1.png"));
  EXPECT_EQ(statusOf({"scan", "--wait"}), "Added 1 shot");
  const auto shot = home_.open(ProcessRole::tool)->shots().front();
  EXPECT_TRUE(shot->ocrDone);
  EXPECT_NE(shot->phash, 0);
  EXPECT_EQ(shot->barcodes, std::vector<std::string>{"mail ann@example.com"});
  EXPECT_EQ(shot->sensitive, std::vector<std::string>{"Email"});
}

}  // namespace
}  // namespace Nimbrel
