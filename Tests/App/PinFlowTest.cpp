// Every way that leads to a pin in the main window.

#include "App/ApplicationFixture.h"

#include "Support/FakeOwnerAuthentication.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QMenu>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class PinFlowTest : public Testing::ApplicationFixture {
 protected:
  PinFlowTest() {
    auto owner = std::make_unique<Testing::FakeOwnerAuthentication>();
    owner_ = owner.get();
    services_.ownerAuthentication = std::move(owner);
    addShot("Screenshot 1.png", "A recipe for soup");
    addShot("Screenshot 2.png", "Departure from platform nine");
    addShot("Screenshot secret.png", "the key is under the mat", {"Password"});
    openWindow();
  }

  [[nodiscard]] bool comesToPin(std::size_t count) const {
    return waitUntil([&] { return pins().count() == count; });
  }
  /// The menu over the shot's cell.
  [[nodiscard]] QMenu* openMenuOf(const std::string& name) const {
    const auto place = placeOfShot(name);
    auto* viewport = part<GridView>("gallery.grid").viewport();
    QContextMenuEvent event(QContextMenuEvent::Mouse, viewport->mapFromGlobal(place), place);
    QApplication::sendEvent(viewport, &event);
    QMenu* menu = nullptr;
    EXPECT_TRUE(waitUntil([&] {
      menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      return menu != nullptr;
    }));
    return menu;
  }

  Testing::FakeOwnerAuthentication* owner_ = nullptr;
};

TEST_F(PinFlowTest, TheButtonOfTheDetailsPinsTheShot) {
  clickShot("Screenshot 1.png");
  clickPart("inspector.pin");
  EXPECT_TRUE(comesToPin(1));
  EXPECT_NE(pins().window(shot("Screenshot 1.png")->id), nullptr);
}

TEST_F(PinFlowTest, TheMenuOfACellPinsTheShot) {
  auto* menu = openMenuOf("Screenshot 2.png");
  ASSERT_NE(menu, nullptr);
  for (auto* item : menu->actions()) {
    if (item->text() != QStringLiteral("Pin to Screen")) continue;
    EXPECT_TRUE(item->isEnabled());
    item->trigger();
  }
  menu->close();
  EXPECT_TRUE(comesToPin(1));
  EXPECT_NE(pins().window(shot("Screenshot 2.png")->id), nullptr);
}

TEST_F(PinFlowTest, TheCommandPinsAllSelectedShotsAndUnpinAllClosesThem) {
  clickShot("Screenshot 1.png");
  clickShot("Screenshot 2.png", Qt::ControlModifier);
  chooseFromMenu("menu.pin");
  EXPECT_TRUE(comesToPin(2));
  chooseFromMenu("menu.unpinAll");
  EXPECT_EQ(pins().count(), 0U);
}

TEST_F(PinFlowTest, AProtectedShotIsPinnedOnceTheOwnerHasAgreed) {
  clickShot("Screenshot secret.png");
  chooseFromMenu("menu.pin");
  ASSERT_TRUE(owner_->isAsked());
  EXPECT_EQ(pins().count(), 0U);
  owner_->decide(true);
  EXPECT_TRUE(comesToPin(1));
}

TEST_F(PinFlowTest, AProtectedShotIsNotPinnedAgainstTheOwnersWill) {
  clickShot("Screenshot secret.png");
  chooseFromMenu("menu.pin");
  owner_->decide(false);
  Testing::runEventLoopFor(std::chrono::milliseconds(200));
  EXPECT_EQ(pins().count(), 0U);
}

TEST_F(PinFlowTest, PinsGoWhenTheApplicationQuits) {
  clickShot("Screenshot 1.png");
  chooseFromMenu("menu.pin");
  ASSERT_TRUE(comesToPin(1));
  window().close();
  EXPECT_EQ(pins().count(), 0U);
}

}  // namespace
}  // namespace Nimbrel
