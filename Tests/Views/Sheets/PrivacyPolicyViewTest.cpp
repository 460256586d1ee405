#include "Views/Sheets/PrivacyPolicyView.h"

#include "Views/Sheets/SheetFixture.h"
#include "Views/Sheets/WrappedText.h"

#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using ::testing::SizeIs;

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
  ASSERT_THAT(texts(), SizeIs(15));
  EXPECT_EQ(texts().front(), "Your screenshots stay on your Mac");
  EXPECT_THAT(texts(), Contains("Nimbrel contains no advertising SDK and does not send product analytics or "
                                "screenshot telemetry."));
  EXPECT_EQ(texts().back(), "Effective: September 23, 2026");
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
