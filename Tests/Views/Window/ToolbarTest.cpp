#include "Views/Window/Toolbar.h"

#include "Views/Window/WindowFixture.h"

#include <QApplication>
#include <QMenuBar>
#include <QSlider>
#include <QToolButton>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;

class ToolbarTest : public Testing::WindowFixture {
 protected:
  /// Items as they are shown, rules as "-" and titles of groups in brackets.
  static std::vector<std::string> itemsOf(const QMenu& menu) {
    std::vector<std::string> items;
    for (const auto* item : menu.actions()) {
      if (!item->isVisible()) continue;
      auto text = item->text().toStdString();
      if (item->isSeparator()) text = text.empty() ? "-" : "[" + text + "]";
      items.push_back(text);
    }
    return items;
  }
  [[nodiscard]] std::vector<std::string> chosen() const {
    std::vector<std::string> titles;
    for (const auto* item : find<QMenu>("viewOptions.menu")->actions()) {
      if (item->isChecked()) titles.push_back(item->text().toStdString());
    }
    return titles;
  }
  [[nodiscard]] std::vector<std::string> moreOptions() const {
    auto* menu = find<QMenu>("moreOptions.menu");
    Q_EMIT menu->aboutToShow();
    return itemsOf(*menu);
  }
};

TEST_F(ToolbarTest, ViewOptionsStandInTheirOrder) {
  openWindow();
  EXPECT_THAT(
      itemsOf(*find<QMenu>("viewOptions.menu")),
      ElementsAre("[View As]", "Grid", "Gallery", "-", "[Sort]", "Newest First", "Oldest First", "Name", "Group by Day",
                  "-", "Small Thumbnails", "Medium Thumbnails", "Large Thumbnails", "-", "Hide Details"));
  EXPECT_EQ(find<QToolButton>("viewOptions")->accessibleName(), QStringLiteral("View Options"));
  EXPECT_EQ(find<QToolButton>("viewOptions")->toolTip(), QStringLiteral("Sort, group, and resize screenshots"));
}

TEST_F(ToolbarTest, ViewOptionsAreTheSettings) {
  openWindow();
  EXPECT_THAT(chosen(), ElementsAre("Grid", "Newest First", "Group by Day"));
  action("viewOptions.gallery")->trigger();
  action("viewOptions.name")->trigger();
  action("viewOptions.groupByDay")->trigger();
  EXPECT_EQ(store_->settings().galleryLayout(), GalleryLayout::gallery);
  EXPECT_EQ(store_->settings().gallerySort(), GallerySort::name);
  EXPECT_FALSE(store_->settings().groupByDay());
  EXPECT_THAT(chosen(), ElementsAre("Gallery", "Name"));
  store_->settings().galleryLayout.set(GalleryLayout::grid);
  EXPECT_THAT(chosen(), ElementsAre("Grid", "Name"));
}

TEST_F(ToolbarTest, ChoosingWhatIsChosenKeepsItsMark) {
  openWindow();
  action("viewOptions.grid")->trigger();
  EXPECT_THAT(chosen(), ElementsAre("Grid", "Newest First", "Group by Day"));
}

TEST_F(ToolbarTest, SizesOfThumbnailsAreSetByMenuAndSlider) {
  openWindow();
  auto* slider = find<QSlider>("thumbnailSize");
  EXPECT_EQ(slider->value(), 190);
  EXPECT_EQ(slider->minimum(), 120);
  EXPECT_EQ(slider->maximum(), 320);
  EXPECT_EQ(slider->width(), 120);
  EXPECT_EQ(slider->accessibleName(), QStringLiteral("Thumbnail Size"));
  EXPECT_EQ(find<QWidget>("thumbnailSizeControl")->size(), QSize(190, 32));
  for (const auto& [name, size] : {std::pair{"viewOptions.small", 140}, std::pair{"viewOptions.large", 270},
                                   std::pair{"viewOptions.medium", 190}}) {
    action(name)->trigger();
    EXPECT_EQ(store_->settings().thumbSize(), size);
    EXPECT_EQ(slider->value(), size);
  }
  slider->setFocus(Qt::TabFocusReason);
  QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_EQ(store_->settings().thumbSize(), 200);
}

TEST_F(ToolbarTest, MoreOptionsFileTheSelectionOrTheWholeInbox) {
  openWindow();
  EXPECT_THAT(moreOptions(), ElementsAre("Move Selection to Trash")) << "with nothing in the Inbox";
  EXPECT_FALSE(isEnabled("moreOptions.trash"));
  const auto one = add("a.png");
  add("b.png");
  EXPECT_THAT(moreOptions(), ElementsAre("File All Inbox Screenshots", "Move Selection to Trash"));
  select({one});
  EXPECT_THAT(moreOptions(), ElementsAre("File Selection to Library", "Move Selection to Trash"));
  EXPECT_TRUE(isEnabled("moreOptions.trash"));
  action("moreOptions.file")->trigger();
  EXPECT_EQ(store_->inboxCount(), 1);
  store_->setSelection({});
  action("moreOptions.file")->trigger();
  EXPECT_EQ(store_->inboxCount(), 0);
}

TEST_F(ToolbarTest, TypingSearchesAtEveryChange) {
  add("a.png");
  openWindow();
  auto* field = find<SearchField>("searchField");
  EXPECT_EQ(field->placeholderText(), QStringLiteral("Search text in shots"));
  QTest::keyClicks(field, QStringLiteral("ha"));
  EXPECT_EQ(store_->query(), "ha");
  ASSERT_TRUE(store_->matchedIDs());
  EXPECT_TRUE(store_->matchedIDs()->empty());
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_EQ(store_->query(), "");
  EXPECT_FALSE(store_->matchedIDs());
}

TEST_F(ToolbarTest, TheButtonThatClearsIsThereWhileThereIsText) {
  openWindow();
  EXPECT_FALSE(action("searchField.clear")->isVisible());
  find<SearchField>("searchField")->setText(QStringLiteral("x"));
  EXPECT_TRUE(action("searchField.clear")->isVisible());
  action("searchField.clear")->trigger();
  EXPECT_EQ(store_->query(), "");
}

TEST_F(ToolbarTest, TheSearchFieldShrinksAndNothingIsCutOff) {
  openWindow();
  EXPECT_EQ(find<QWidget>("searchField")->width(), 226);
  EXPECT_EQ(find<QWidget>("searchField")->height(), 30);
  window_->resize(window_->minimumSize());
  settle();
  EXPECT_GE(find<QWidget>("searchField")->width(), 160);
  EXPECT_LE(find<QWidget>("searchField")->geometry().right(), 1000 - 12);
}

TEST_F(ToolbarTest, TabGoesFromTheSidebarButtonToTheSearchFieldInOrder) {
  openWindow();
  auto* from = find<QWidget>("sidebarButton");
  from->setFocus(Qt::TabFocusReason);
  std::vector<std::string> names;
  for (int i = 0; i < 6; ++i) {
    names.push_back(QApplication::focusWidget()->objectName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_THAT(names,
              ElementsAre("sidebarButton", "menuTitles", "viewOptions", "thumbnailSize", "moreOptions", "searchField"));
}

TEST_F(ToolbarTest, TabMarksTheFirstTitleAndDownOpensItsMenu) {
  openWindow();
  auto* titles = find<QMenuBar>("menuTitles");
  titles->setFocus(Qt::TabFocusReason);
  ASSERT_NE(titles->activeAction(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  QTest::keyClick(titles, Qt::Key_Right);
  QTest::keyClick(titles, Qt::Key_Down);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget()->objectName(), QStringLiteral("menu.file"));
  QApplication::activePopupWidget()->close();
}

}  // namespace
}  // namespace Nimbrel
