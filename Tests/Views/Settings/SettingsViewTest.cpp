#include "Views/Settings/SettingsViewFixture.h"

#include "Support/FakePictureReader.h"
#include "Support/LogRecorder.h"
#include "Views/Shared/TextStyles.h"

#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using SettingsViewTest = Testing::SettingsViewFixture;

TEST_F(SettingsViewTest, HasItsSizeAndTheSectionsInTheirOrder) {
  show();
  EXPECT_EQ(view_->size(), QSize(600, 650));
  EXPECT_EQ(view_->minimumSize(), view_->maximumSize());
  std::vector<std::pair<int, std::string>> panes;
  for (const auto* pane : view_->findChildren<FormSection*>()) {
    panes.emplace_back(pane->y(), pane->objectName().toStdString());
  }
  std::ranges::sort(panes);
  std::vector<std::string> names;
  for (const auto& pane : panes) names.push_back(pane.second);
  EXPECT_THAT(names, ElementsAre("settings.library", "settings.capture", "settings.folders", "settings.text",
                                 "settings.projects", "settings.rules", "settings.sync", "settings.privacy"));
}

TEST_F(SettingsViewTest, RescanNowScans) {
  show();
  home_.addFile(home_.desktop("Screenshot 1.png"));
  click("rescan");
  EXPECT_THAT(Testing::namesOf(store_->shots()), ElementsAre("Screenshot 1.png"));
}

TEST_F(SettingsViewTest, EscapeClosesAndWhatWasBegunGoes) {
  show();
  type("newProject", QStringLiteral("begun"));
  QTest::keyClick(&field("newProject"), Qt::Key_Escape);
  ASSERT_TRUE(isGone());
  show();
  EXPECT_EQ(field("newProject").text(), QString());
}

TEST_F(SettingsViewTest, ReturnPressesNoButtonOfAnotherRow) {
  show();
  QTest::keyClick(&toggle("autoFile"), Qt::Key_Return);
  EXPECT_THAT(view_->findChildren<QFileDialog*>(), IsEmpty());
}

TEST_F(SettingsViewTest, TheFormNeedsNoScrollingToTheSide) {
  settings().sources.set({std::string("/") + std::string(400, 'x')});
  settings().projects.set({std::string(400, 'y')});
  show();
  click("addRule");
  EXPECT_EQ(at<QScrollArea>("scroll").horizontalScrollBar()->maximum(), 0);
}

TEST_F(SettingsViewTest, EveryControlHasAName) {
  settings().projects.set({"Launch"});
  show();
  click("addRule");
  for (const auto* button : view_->findChildren<QAbstractButton*>()) {
    EXPECT_FALSE(button->accessibleName().isEmpty() && button->text().isEmpty()) << button->objectName().toStdString();
  }
  for (const auto* field : view_->findChildren<QLineEdit*>()) {
    EXPECT_FALSE(field->accessibleName().isEmpty()) << field->objectName().toStdString();
  }
}

TEST_F(SettingsViewTest, WhatTabReachesIsInSight) {
  settings().projects.set({"Launch"});
  settings().syncRoot.set("/vault");
  show();
  click("addRule");
  // The name of a new rule takes the keyboard in a later turn.
  QCoreApplication::sendPostedEvents();
  const auto& last = at("rescan");
  const auto& viewport = *at<QScrollArea>("scroll").viewport();
  at("libraryChoose").setFocus(Qt::TabFocusReason);
  int stops = 0;
  for (; QApplication::focusWidget() != &last && stops < 100; ++stops) {
    const auto* focused = QApplication::focusWidget();
    ASSERT_NE(focused, nullptr);
    const QRect place(focused->mapTo(&viewport, QPoint()), focused->size());
    EXPECT_TRUE(viewport.rect().contains(place)) << focused->objectName().toStdString();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCoreApplication::sendPostedEvents();
  }
  EXPECT_EQ(QApplication::focusWidget(), &last) << "the last stop after " << stops;
}

TEST_F(SettingsViewTest, SpaceTurnsASwitch) {
  show();
  toggle("autoFile").setFocus(Qt::TabFocusReason);
  QTest::keyClick(&toggle("autoFile"), Qt::Key_Space);
  EXPECT_TRUE(settings().autoFile());
}

TEST_F(SettingsViewTest, ASwitchIsReadWithItsLabelAndItsExplanation) {
  show();
  EXPECT_EQ(toggle("autoFile").accessibleName(), QStringLiteral("File new screenshots automatically"));
  EXPECT_EQ(toggle("autoFile").accessibleDescription(),
            QStringLiteral("Filed shots move into year/month folders inside the library."));
}

TEST_F(SettingsViewTest, FromRightToLeftLabelsStandAtTheRight) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  show();
  const auto& remove = at("folders.remove");
  EXPECT_LT(remove.mapTo(view_, QPoint()).x(), view_->width() / 4);
  EXPECT_LT(toggle("autoFile").mapTo(view_, QPoint()).x(), view_->width() / 4);
  for (const auto* label : at("library").findChildren<QLabel*>()) {
    const bool isValue = label->objectName() == QStringLiteral("settings.libraryPath");
    EXPECT_TRUE(label->alignment() & (isValue ? Qt::AlignLeft : Qt::AlignRight)) << label->text().toStdString();
  }
  EXPECT_TRUE(at<QLabel>("folders.entry").alignment() & Qt::AlignRight);
  QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(SettingsViewTest, LargerTextIsNotClipped) {
  const auto former = interfaceFont();
  auto font = former;
  font.setPointSizeF(15);
  setInterfaceFont(font);
  settings().projects.set({"Launch"});
  show();
  click("addRule");
  const auto isClipped = [](const QLabel* label) {
    return label->isVisible() && label->height() < label->fontMetrics().height();
  };
  // The rows of the rule find their place in a later turn.
  EXPECT_TRUE(Testing::waitUntil([&] { return std::ranges::none_of(view_->findChildren<QLabel*>(), isClipped); }));
  EXPECT_EQ(at<QScrollArea>("scroll").horizontalScrollBar()->maximum(), 0);
  delete view_;
  setInterfaceFont(former);
}

TEST_F(SettingsViewTest, WhatCannotBeStoredHoldsWhileTheWindowIsThere) {
  show();
  // A file in the place of the folder: nobody can write into that, whoever runs the test.
  std::filesystem::remove_all(home_.folders().preferences);
  std::ofstream(home_.folders().preferences) << "no folder";
  const Testing::LogRecorder log;
  click("autoFile");
  type("newProject", QStringLiteral("Launch"));
  click("addProject");
  EXPECT_TRUE(toggle("autoFile").isChecked());
  EXPECT_TRUE(settings().autoFile());
  EXPECT_THAT(settings().projects(), ElementsAre("Launch"));
}

/// A Store that reads, with a reader that answers when it is told to.
class ReadingSettingsTest : public ::testing::Test {
 protected:
  ReadingSettingsTest() {
    auto reader = std::make_unique<Testing::FakePictureReader>();
    reader_ = reader.get();
    Services services;
    services.pictureReader = std::move(reader);
    store_ = home_.open(ProcessRole::menuBarCompanion, std::move(services));
    view_ = std::make_unique<SettingsView>(*store_, SettingsLinks());
    view_->show();
  }
  ~ReadingSettingsTest() override { view_.reset(); }

  [[nodiscard]] const QLabel& remaining() const {
    return *view_->findChild<QLabel*>(QStringLiteral("settings.remaining"));
  }

  Testing::StoreHome home_;
  Testing::FakePictureReader* reader_ = nullptr;
  std::unique_ptr<Store> store_;
  std::unique_ptr<SettingsView> view_;
};

TEST_F(ReadingSettingsTest, TellsHowManyShotsAreStillToBeRead) {
  EXPECT_TRUE(remaining().isHidden());
  home_.addFile(home_.desktop("Screenshot 1.png"));
  home_.addFile(home_.desktop("Screenshot 2.png"));
  store_->scan();
  ASSERT_TRUE(Testing::waitUntil([this] { return !remaining().isHidden(); }));
  EXPECT_EQ(remaining().text(), QStringLiteral("Reading text… 2 left"));
  ASSERT_TRUE(Testing::waitUntil([this] { return reader_->waiting() > 0; }));
  reader_->answer(Testing::readingOf({"one"}));
  EXPECT_TRUE(Testing::waitUntil([this] { return remaining().text() == QStringLiteral("Reading text… 1 left"); }));
  ASSERT_TRUE(Testing::waitUntil([this] { return reader_->waiting() > 0; }));
  reader_->answer(Testing::readingOf({"two"}));
  EXPECT_TRUE(Testing::waitUntil([this] { return remaining().isHidden(); }));
}

TEST_F(ReadingSettingsTest, WhatCameWhileReadingWasOffIsReadWhenItIsSwitchedOn) {
  auto& toggle = *view_->findChild<QCheckBox*>(QStringLiteral("settings.runOCR"));
  toggle.click();
  ASSERT_FALSE(store_->settings().runOCR());
  home_.addFile(home_.desktop("Screenshot 1.png"));
  store_->scan();
  EXPECT_EQ(store_->ocrRemaining(), 0U);
  ASSERT_TRUE(Testing::waitUntil([this] { return reader_->waiting() == 1; })) << "its codes are looked for";
  toggle.click();
  EXPECT_EQ(store_->ocrRemaining(), 1U);
  EXPECT_TRUE(Testing::waitUntil([this] { return reader_->waiting() == 2; })) << "its text is read as well";
}

}  // namespace
}  // namespace Nimbrel
