#include "Views/Sheets/UpdateView.h"

#include "Views/Inspector/BoxedText.h"
#include "Views/Sheets/SheetFixture.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;

class UpdateViewTest : public Testing::SheetFixture {
 protected:
  void openSheet(const std::string& notes = "<p>Faster.</p><ul><li>Calmer</li><li>Smaller</li></ul>") {
    sheet_ = new UpdateView({.version = "1.3", .running = "1.2", .notes = notes}, &window_);
    QObject::connect(sheet_, &UpdateView::saveRequested, &window_, [this] { ++saved_; });
    QObject::connect(sheet_, &UpdateView::skipRequested, &window_, [this] { ++skipped_; });
    sheet_->open();
  }
  [[nodiscard]] std::string notes() const {
    return in<BoxedText>(*sheet_, "update.notes")->toPlainText().toStdString();
  }
  [[nodiscard]] bool isGone() const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return sheet_.isNull();
  }

  QPointer<UpdateView> sheet_;
  int saved_ = 0;
  int skipped_ = 0;
};

TEST_F(UpdateViewTest, TellsWhatIsNewAndWhatTheUserHas) {
  openSheet();
  EXPECT_EQ(sheet_->windowTitle(), QStringLiteral("Nimbrel 1.3 Is Available"));
  EXPECT_THAT(in<QLabel>(*sheet_, "update.words")->text().toStdString(), HasSubstr("You have 1.2."));
  EXPECT_THAT(notes(), HasSubstr("Faster."));
  EXPECT_THAT(notes(), HasSubstr("Smaller"));
  EXPECT_EQ(sheet_->width(), 560);
}

TEST_F(UpdateViewTest, ReturnSavesTheDownloadAndNothingElse) {
  openSheet();
  QTest::keyClick(sheet_, Qt::Key_Return);
  EXPECT_EQ(saved_, 1);
  EXPECT_EQ(skipped_, 0);
  EXPECT_TRUE(isGone());
}

TEST_F(UpdateViewTest, EscapeLeavesItForLater) {
  openSheet();
  QTest::keyClick(sheet_, Qt::Key_Escape);
  EXPECT_EQ(saved_ + skipped_, 0);
  EXPECT_TRUE(isGone());
}

TEST_F(UpdateViewTest, AVersionCanBeSkipped) {
  openSheet();
  in<QPushButton>(*sheet_, "update.skip")->click();
  EXPECT_EQ(saved_, 0);
  EXPECT_EQ(skipped_, 1);
  EXPECT_TRUE(isGone());
}

TEST_F(UpdateViewTest, WithoutNotesThereIsNoBox) {
  openSheet("<p> </p>");
  EXPECT_EQ(sheet_->findChild<BoxedText*>(), nullptr);
}

TEST_F(UpdateViewTest, NotesOfAnySizeAndKindMakeNoLargerSheet) {
  openSheet("short");
  const auto usual = sheet_->size();
  sheet_->reject();
  for (const auto& notes :
       {std::string(1'000'000, 'x'), std::string("<script>alert(1)</script><img src='file:///a'>text"),
        std::string("\xff\xfe unreadable"), std::string("a\0b", 3)}) {
    openSheet(notes);
    EXPECT_EQ(sheet_->size(), usual);
    EXPECT_LE(sheet_->findChild<BoxedText*>()->toPlainText().size(), 20'000);
    sheet_->reject();
  }
}

TEST_F(UpdateViewTest, TabGoesFromTheNotesToTheButtons) {
  openSheet();
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet_));
  in<BoxedText>(*sheet_, "update.notes")->setFocus();
  for (const auto* name : {"update.later", "update.skip", "update.save"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), in<QPushButton>(*sheet_, name)) << name;
  }
}

TEST_F(UpdateViewTest, Pictures) {
  openSheet(
      "<p>Nimbrel is quicker at what it does most.</p><ul><li>Searches answer while you type.</li>"
      "<li>A recording can be cut before it is exported.</li><li>Pins stay where they were.</li></ul>");
  keepPictures(*sheet_, QStringLiteral("sheet-update"));
}

}  // namespace
}  // namespace Nimbrel
