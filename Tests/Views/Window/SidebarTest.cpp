#include "Views/Window/Sidebar.h"

#include "Views/Window/WindowFixture.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;

class SidebarTest : public Testing::WindowFixture {
 protected:
  void open() {
    openWindow();
    sidebar_ = find<Sidebar>("sidebar");
  }
  [[nodiscard]] std::vector<std::string> titles() const {
    std::vector<std::string> result;
    for (int row = 0; row < sidebar_->model()->rowCount(); ++row) {
      result.push_back(sidebar_->model()->index(row, 0).data().toString().toStdString());
    }
    return result;
  }
  [[nodiscard]] QModelIndex row(const char* title) const {
    const auto found = sidebar_->model()->match(sidebar_->model()->index(0, 0), Qt::DisplayRole,
                                                QString::fromUtf8(title), 1, Qt::MatchExactly);
    EXPECT_EQ(found.size(), 1) << title;
    return found.isEmpty() ? QModelIndex() : found.front();
  }
  [[nodiscard]] QString spoken(const char* title) const { return row(title).data(Qt::AccessibleTextRole).toString(); }
  [[nodiscard]] QString chosen() const {
    const auto selected = sidebar_->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : selected.front().data().toString();
  }
  void click(const char* title, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(sidebar_->viewport(), Qt::LeftButton, modifiers, sidebar_->visualRect(row(title)).center());
    settle();
  }
  void askForMenu(const char* title) {
    const auto place = sidebar_->visualRect(row(title)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, sidebar_->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(sidebar_->viewport(), &event);
  }

  Sidebar* sidebar_ = nullptr;
};

TEST_F(SidebarTest, AnEmptyLibraryShowsFiveRowsWithoutBadges) {
  open();
  EXPECT_THAT(titles(), ElementsAre("Inbox", "All Shots", "Today", "Last 7 Days", "Favorites"));
  EXPECT_EQ(spoken("Inbox"), QStringLiteral("Inbox"));
  EXPECT_EQ(spoken("All Shots"), QStringLiteral("All Shots"));
}

TEST_F(SidebarTest, BadgesAreReadWithTheirRowAndFollowTheCatalogue) {
  open();
  add("a.png");
  add("b.png");
  settle();
  EXPECT_EQ(spoken("Inbox"), QStringLiteral("Inbox, 2"));
}

TEST_F(SidebarTest, AClickChoosesTheFilter) {
  open();
  click("Favorites");
  EXPECT_EQ(store_->filter(), Filter{Filter::Favorites{}});
}

TEST_F(SidebarTest, TheFilterOfTheStoreIsTheSelectedRow) {
  open();
  EXPECT_EQ(chosen(), QStringLiteral("Inbox"));
  store_->setFilter({Filter::Today{}});
  EXPECT_EQ(chosen(), QStringLiteral("Today"));
}

TEST_F(SidebarTest, AFilterWithoutARowSelectsNone) {
  open();
  store_->setFilter({Filter::Similar{7}});
  EXPECT_EQ(chosen(), QString());
}

TEST_F(SidebarTest, ArrowKeysGoFromRowToRowAndPassOverTitles) {
  store_->settings().savedSearches.set({"invoice"});
  open();
  sidebar_->setFocus();
  click("Favorites");
  QTest::keyClick(sidebar_, Qt::Key_Down);
  EXPECT_EQ(store_->filter(), Filter{Filter::Saved{"invoice"}});
  QTest::keyClick(sidebar_, Qt::Key_Up);
  EXPECT_EQ(store_->filter(), Filter{Filter::Favorites{}});
}

TEST_F(SidebarTest, NothingCannotBeChosen) {
  open();
  click("Today");
  click("Today", Qt::ControlModifier);
  EXPECT_EQ(store_->filter(), Filter{Filter::Today{}});
  EXPECT_EQ(chosen(), QStringLiteral("Today"));
}

TEST_F(SidebarTest, SelectingASavedSearchReplacesTheTextInTheSearchField) {
  store_->settings().savedSearches.set({"invoice"});
  open();
  auto* field = find<QLineEdit>("searchField");
  field->setText(QStringLiteral("something else"));
  click("invoice");
  EXPECT_EQ(field->text(), QStringLiteral("invoice"));
  EXPECT_EQ(store_->query(), "invoice");
  EXPECT_TRUE(store_->matchedIDs());
}

TEST_F(SidebarTest, ASensitiveCountFallingToZeroRemovesTheRowAndLeavesTheFilter) {
  const auto shot = add("a.png");
  makeSensitive(shot);
  open();
  click("Sensitive");
  store_->database().setOCR(shot->id, "somebody", {});
  store_->reload();
  settle();
  EXPECT_THAT(titles(), ::testing::Not(::testing::Contains("Sensitive")));
  EXPECT_EQ(store_->filter(), Filter{Filter::Sensitive{}});
  EXPECT_EQ(chosen(), QString());
}

TEST_F(SidebarTest, OnlySavedSearchesHaveAMenuAndItRemovesThem) {
  store_->settings().savedSearches.set({"invoice", "ticket"});
  open();
  askForMenu("Today");
  EXPECT_EQ(sidebar_->findChild<QMenu*>(QStringLiteral("sidebar.menu")), nullptr);
  askForMenu("invoice");
  auto* menu = find<QMenu>("sidebar.menu");
  ASSERT_EQ(menu->actions().size(), 1);
  EXPECT_EQ(menu->actions().front()->text(), QStringLiteral("Remove"));
  EXPECT_EQ(chosen(), QStringLiteral("Inbox")) << "asking for the menu chooses nothing";
  menu->actions().front()->trigger();
  menu->close();
  settle();
  EXPECT_THAT(store_->settings().savedSearches(), ElementsAre("ticket"));
  EXPECT_THAT(titles(), ::testing::Not(::testing::Contains("invoice")));
}

TEST_F(SidebarTest, ATextThatSteersTheLinesAroundItIsShownHarmless) {
  store_->settings().savedSearches.set({"in\nvoice \u202Egnp"});
  open();
  EXPECT_THAT(titles(), ::testing::Contains("in voice \uFFFDgnp"));
}

TEST_F(SidebarTest, ANameThatLooksLikeMarkupIsNone) {
  const auto shot = add("a.png");
  store_->database().setApp(shot->id, "<b>Bold & co</b>", "", Database::Trusted::Yes);
  store_->reload();
  open();
  const auto tip = row("<b>Bold & co</b>").data(Qt::ToolTipRole).toString();
  EXPECT_EQ(tip, QStringLiteral("<qt>&lt;b&gt;Bold &amp; co&lt;/b&gt;</qt>"));
}

TEST_F(SidebarTest, StaysWhereItWasScrolledToWhenRowsCome) {
  std::vector<std::string> searches;
  for (int i = 0; i < 100; ++i) searches.push_back("search " + std::to_string(i));
  store_->settings().savedSearches.set(searches);
  open();
  sidebar_->verticalScrollBar()->setValue(400);
  searches.emplace_back("another");
  store_->settings().savedSearches.set(searches);
  settle();
  EXPECT_EQ(sidebar_->verticalScrollBar()->value(), 400);
}

TEST_F(SidebarTest, ShowsNoScrollBars) {
  open();
  EXPECT_EQ(sidebar_->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
  EXPECT_EQ(sidebar_->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

}  // namespace
}  // namespace Nimbrel
