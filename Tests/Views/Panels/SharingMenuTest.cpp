#include "Views/Panels/SharingMenu.h"

#include "Views/Sheets/SheetFixture.h"

#include <QTest>

namespace Nimbrel {

namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

class SharingMenuTest : public Testing::SheetFixture {
 protected:
  void openMenu() {
    menu_ = new SharingMenu(*store_, add({.name = "a.png"}), &window_);
    menu_->popup({});
  }
  [[nodiscard]] std::vector<std::string> titles(const QMenu& menu) const {
    std::vector<std::string> texts;
    for (const auto* action : menu.actions()) {
      if (!action->isSeparator()) texts.push_back(action->text().toStdString());
    }
    return texts;
  }
  [[nodiscard]] QMenu* openers() const {
    auto* menu = in<QMenu>(*menu_, "share.openWith");
    Q_EMIT menu->aboutToShow();
    return menu;
  }
  void trigger(const char* name) const { in<QAction>(*menu_, name)->trigger(); }
  template <class Thing>
  [[nodiscard]] static Thing* in(const QObject& parent, const char* name) {
    auto* thing = parent.findChild<Thing*>(QString::fromLatin1(name));
    EXPECT_NE(thing, nullptr) << name;
    return thing;
  }

  QPointer<SharingMenu> menu_;
};

TEST_F(SharingMenuTest, OffersWhatThereIs) {
  openMenu();
  EXPECT_THAT(titles(*menu_), ElementsAre("Copy File", "Email…", "Open With"));
  EXPECT_THAT(titles(*openers()), ElementsAre("No Applications"));
}

TEST_F(SharingMenuTest, CopiesTheFile) {
  openMenu();
  trigger("share.copyFile");
  EXPECT_EQ(pasteboard_->file, home_.desktop("a.png"));
  EXPECT_EQ(store_->status(), "Copied file");
}

TEST_F(SharingMenuTest, BeginsAnEMailWithTheFile) {
  openMenu();
  trigger("share.mail");
  EXPECT_THAT(workspace_->mailed, ElementsAre(home_.desktop("a.png")));
}

TEST_F(SharingMenuTest, OpensWithAnotherApplication) {
  workspace_->openers = {{.id = "viewer.desktop", .name = "Viewer", .icon = {}},
                         {.id = "paint.desktop", .name = "Cut & Paint", .icon = "/nowhere.png"}};
  openMenu();
  EXPECT_THAT(titles(*openers()), ElementsAre("Viewer", "Cut && Paint"));
  openers()->actions().at(1)->trigger();
  EXPECT_THAT(workspace_->taken, ElementsAre(Pair("paint.desktop", home_.desktop("a.png"))));
}

TEST_F(SharingMenuTest, WhoHasNoIconGetsASymbol) {
  workspace_->openers = {{.id = "viewer.desktop", .name = "Viewer", .icon = {}},
                         {.id = "paint.desktop", .name = "Paint", .icon = "/nowhere.png"},
                         {.id = "other.desktop", .name = "Other", .icon = "no-such-icon"}};
  workspace_->sendersThere = {{.id = "bluetooth-sendto", .name = "Bluetooth", .icon = "no-such-icon"}};
  openMenu();
  auto actions = openers()->actions();
  actions.append(in<QAction>(*menu_, "share.send"));
  EXPECT_EQ(actions.size(), 4);
  for (const auto* action : actions) {
    EXPECT_FALSE(action->icon().pixmap(16, 16).isNull()) << action->text().toStdString();
  }
}

TEST_F(SharingMenuTest, SendsThroughWhatTheDesktopOffers) {
  workspace_->sendersThere = {{.id = "bluetooth-sendto", .name = "Bluetooth", .icon = "bluetooth"}};
  openMenu();
  EXPECT_THAT(titles(*menu_), ElementsAre("Copy File", "Email…", "Open With", "Bluetooth"));
  trigger("share.send");
  EXPECT_THAT(workspace_->taken, ElementsAre(Pair("bluetooth-sendto", home_.desktop("a.png"))));
}

TEST_F(SharingMenuTest, ClosesWhenEverythingIsLockedAndGoes) {
  openMenu();
  store_->lockSensitive();
  EXPECT_FALSE(menu_->isVisible());
  QCoreApplication::sendPostedEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(menu_.isNull());
}

TEST_F(SharingMenuTest, OpensAtTheUpperRightOfItsWindow) {
  share(*store_, add({.name = "a.png"}), window_);
  auto* menu = window_.findChild<SharingMenu*>();
  ASSERT_NE(menu, nullptr);
  EXPECT_TRUE(menu->isVisible());
  menu->close();
}

TEST_F(SharingMenuTest, Pictures) {
  workspace_->openers = {{.id = "viewer.desktop", .name = "Viewer", .icon = {}},
                         {.id = "paint.desktop", .name = "Cut & Paint", .icon = {}}};
  workspace_->sendersThere = {{.id = "bluetooth-sendto", .name = "Bluetooth", .icon = {}}};
  openMenu();
  menu_->setActiveAction(openers()->menuAction());
  keepPictures(*menu_, QStringLiteral("sharing-menu"));
  auto* submenu = openers();
  submenu->popup({});
  keepPictures(*submenu, QStringLiteral("sharing-menu-open-with"));
  EXPECT_GT(menu_->height(), submenu->height());
  submenu->close();
}

}  // namespace

}  // namespace Nimbrel
