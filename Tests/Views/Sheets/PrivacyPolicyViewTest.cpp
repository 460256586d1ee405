#include "Views/Sheets/PrivacyPolicyView.h"

#include "Views/Shared/Theme.h"
#include "Views/Sheets/SheetFixture.h"
#include "Views/Sheets/WrappedText.h"

#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;

class PrivacyPolicyViewTest : public Testing::SheetFixture {
 protected:
  PrivacyPolicyViewTest() : sheet_(new PrivacyPolicyView(&window_)) { sheet_->open(); }

  [[nodiscard]] std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (const auto* text : sheet_->findChildren<WrappedText*>()) texts.push_back(text->text().toStdString());
    return texts;
  }

  QPointer<PrivacyPolicyView> sheet_;
};

TEST_F(PrivacyPolicyViewTest, SaysSevenThingsAndSinceWhen) {
  EXPECT_EQ(sheet_->windowTitle(), QStringLiteral("Nimbrel Privacy Policy"));
  EXPECT_THAT(
      texts(),
      ElementsAre(
          "Your screenshots stay on your Mac",
          "Nimbrel reads the screenshot folders you choose and stores its catalogue locally. Screenshot previews, "
          "recognized text, notes, tags, and search data are not uploaded to Nimbrel.",
          "On-device recognition",
          "Text recognition, sensitive-text detection, application recognition, duplicate checks, and search indexing "
          "run on your Mac using local system frameworks.",
          "Optional encrypted sync",
          "If you configure encrypted folder sync, Nimbrel writes encrypted copies to the folder you select. That "
          "folder may be managed by a provider such as iCloud or Dropbox. Nimbrel never stores your passphrase.",
          "Software updates",
          "When update checks are enabled, Nimbrel requests an update feed over HTTPS. The web host receives ordinary "
          "connection data such as an IP address. Nimbrel does not enable hardware-profile reporting.",
          "No advertising or analytics",
          "Nimbrel contains no advertising SDK and does not send product analytics or screenshot telemetry.",
          "Control and deletion",
          "You control the original screenshot files. Removing Nimbrel does not delete them. You can remove catalogue "
          "entries or move selected screenshots to Trash from inside the app.",
          "Contact", "A support and privacy email will be published with the Nimbrel website before public release.",
          "Effective: September 23, 2026"));
}

TEST_F(PrivacyPolicyViewTest, HeadingsStandOutFromWhatTheySay) {
  const auto colourOf = [this](qsizetype index) {
    const auto* text = sheet_->findChildren<WrappedText*>().at(index);
    return text->palette().color(text->foregroundRole());
  };
  EXPECT_EQ(colourOf(0), themeColor(Token::Text));
  EXPECT_EQ(colourOf(1), themeColor(Token::Secondary));
  EXPECT_EQ(colourOf(14), themeColor(Token::Tertiary));
}

TEST_F(PrivacyPolicyViewTest, KeepsItsSizeAndScrollsInOneDirection) {
  EXPECT_EQ(sheet_->size(), QSize(620, 600));
  const auto* scroller = in<QScrollArea>(*sheet_, "privacyPolicy.scroller");
  EXPECT_LE(scroller->widget()->width(), scroller->viewport()->width());
  scroller->verticalScrollBar()->setValue(scroller->verticalScrollBar()->maximum());
  const auto* last = sheet_->findChildren<WrappedText*>().back();
  EXPECT_LE(last->mapTo(sheet_.data(), QPoint(0, last->height())).y(), sheet_->height());
}

TEST_F(PrivacyPolicyViewTest, ReturnAndEscapeCloseIt) {
  QTest::keyClick(sheet_, Qt::Key_Return);
  EXPECT_FALSE(sheet_->isVisible());
  sheet_->open();
  QTest::keyClick(sheet_, Qt::Key_Escape);
  EXPECT_FALSE(sheet_->isVisible());
}

TEST_F(PrivacyPolicyViewTest, Pictures) { keepPictures(*sheet_, QStringLiteral("sheet-privacy")); }

}  // namespace
}  // namespace Nimbrel
