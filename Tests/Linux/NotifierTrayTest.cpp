// The icon in trays that a session bus brings together.

#include "Linux/Factory.h"
#include "Linux/NotifierWatcherDouble.h"
#include "Linux/Tray/NotifierTypes.h"
#include "Support/SessionBus.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusObjectPath>
#include <QPixmap>

#include <memory>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::NotifierWatcherDouble;
using Testing::waitUntil;

QIcon squareOf(const QColor& color) {
  QPixmap pixmap(64, 64);
  pixmap.fill(color);
  return QIcon(pixmap);
}

class NotifierTrayTest : public ::testing::Test {
 protected:
  void openWatcher(NotifierWatcherDouble::Host host = NotifierWatcherDouble::Host::There) {
    watcher_ = std::make_unique<NotifierWatcherDouble>(host);
  }
  void openIcon() {
    tray_ = makeTrayIcon();
    tray_->setLook(squareOf(Qt::red), QStringLiteral("Nimbrel"));
    tray_->onActivated([this](const TrayIcon::Activation& activation) { activations_.push_back(activation); });
    tray_->observeHost([this](bool isThere) { told_.push_back(isThere); });
  }
  [[nodiscard]] bool comesToShow(qsizetype count) {
    return waitUntil([&] { return watcher_->items().size() == count; });
  }
  [[nodiscard]] QString item() { return watcher_->items().constFirst(); }

  Testing::SessionBus bus_;
  std::unique_ptr<NotifierWatcherDouble> watcher_;
  std::unique_ptr<TrayIcon> tray_;
  std::vector<TrayIcon::Activation> activations_;
  std::vector<bool> told_;
};

TEST_F(NotifierTrayTest, TheIconIsThereWhileItIsVisible) {
  openWatcher();
  openIcon();
  ASSERT_TRUE(waitUntil([this] { return !told_.empty(); }));
  EXPECT_THAT(told_, ElementsAre(true));
  EXPECT_TRUE(watcher_->items().isEmpty()) << "before it is to be seen";
  tray_->setVisible(true);
  EXPECT_TRUE(comesToShow(1));
  tray_->setVisible(false);
  EXPECT_TRUE(comesToShow(0));
  tray_->setVisible(true);
  EXPECT_TRUE(comesToShow(1));
  tray_.reset();
  EXPECT_TRUE(comesToShow(0));
}

TEST_F(NotifierTrayTest, SaysWhatItIs) {
  openWatcher();
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(comesToShow(1));
  EXPECT_EQ(watcher_->property(item(), QStringLiteral("Title")), QStringLiteral("Nimbrel"));
  EXPECT_EQ(watcher_->property(item(), QStringLiteral("Status")), QStringLiteral("Active"));
  EXPECT_EQ(watcher_->property(item(), QStringLiteral("ItemIsMenu")), false);
  EXPECT_EQ(watcher_->property(item(), QStringLiteral("Menu")).value<QDBusObjectPath>().path(),
            QStringLiteral("/NO_DBUSMENU"));
  EXPECT_FALSE(watcher_->property(item(), QStringLiteral("Flavour")).isValid());
}

TEST_F(NotifierTrayTest, HandsOverItsPictureAndTellsOfAnother) {
  openWatcher();
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(comesToShow(1));
  const auto pictures = [this] {
    return qdbus_cast<NotifierPictures>(watcher_->property(item(), QStringLiteral("IconPixmap")));
  };
  const auto red = pictures();
  ASSERT_FALSE(red.isEmpty());
  EXPECT_EQ(red.constFirst().width, 16);
  EXPECT_EQ(red.constFirst().bytes.size(), 16 * 16 * 4);
  EXPECT_EQ(red.constFirst().bytes.left(4), QByteArray("\xFF\xFF\x00\x00", 4)) << "alpha comes first";
  tray_->setLook(squareOf(Qt::blue), QStringLiteral("Nimbrel"));
  EXPECT_TRUE(waitUntil([this] { return watcher_->newIcons() == 1; }));
  EXPECT_EQ(pictures().constFirst().bytes.left(4), QByteArray("\xFF\x00\x00\xFF", 4));
}

TEST_F(NotifierTrayTest, AnyButtonActivatesItAtItsPlace) {
  openWatcher();
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(comesToShow(1));
  for (const auto* method : {"Activate", "SecondaryActivate", "ContextMenu"}) {
    EXPECT_EQ(watcher_->call(item(), QLatin1String(method), {40, 12}).type(), QDBusMessage::ReplyMessage) << method;
  }
  ASSERT_EQ(activations_.size(), 3U);
  for (const auto& activation : activations_) EXPECT_EQ(activation.place, QRect(40, 12, 1, 1));
}

TEST_F(NotifierTrayTest, ATrayThatDoesNotKnowItsPlaceSaysNothingOfIt) {
  openWatcher();
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(comesToShow(1));
  watcher_->call(item(), QStringLiteral("Activate"), {0, 0});
  ASSERT_EQ(activations_.size(), 1U);
  EXPECT_TRUE(activations_.front().place.isEmpty());
}

TEST_F(NotifierTrayTest, ATokenCountsForTheActivationThatFollows) {
  openWatcher();
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(comesToShow(1));
  watcher_->call(item(), QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("token")});
  watcher_->call(item(), QStringLiteral("Activate"), {40, 12});
  watcher_->call(item(), QStringLiteral("Activate"), {40, 12});
  ASSERT_EQ(activations_.size(), 2U);
  EXPECT_EQ(activations_.front().token, "token");
  EXPECT_EQ(activations_.back().token, "");
}

TEST_F(NotifierTrayTest, CallsOfAnotherKindAreRefused) {
  openWatcher();
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(comesToShow(1));
  EXPECT_EQ(watcher_->call(item(), QStringLiteral("Activate"), {QStringLiteral("here")}).type(),
            QDBusMessage::ErrorMessage);
  EXPECT_EQ(watcher_->call(item(), QStringLiteral("Explode"), {}).type(), QDBusMessage::ErrorMessage);
  EXPECT_TRUE(activations_.empty());
}

TEST_F(NotifierTrayTest, ATrayThatDiesAndComesBackHasTheIconAgain) {
  openWatcher();
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(comesToShow(1));
  watcher_.reset();
  ASSERT_TRUE(waitUntil([this] { return told_.size() == 2; }));
  openWatcher();
  EXPECT_TRUE(comesToShow(1));
  EXPECT_THAT(told_, ElementsAre(true, false, true));
}

TEST_F(NotifierTrayTest, AHostThatComesLateHasTheIcon) {
  openWatcher(NotifierWatcherDouble::Host::Missing);
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(waitUntil([this] { return !told_.empty(); }));
  EXPECT_TRUE(watcher_->items().isEmpty()) << "nobody would show it";
  watcher_->setHost(NotifierWatcherDouble::Host::There);
  EXPECT_TRUE(comesToShow(1));
  watcher_->setHost(NotifierWatcherDouble::Host::Missing);
  EXPECT_TRUE(comesToShow(0));
  EXPECT_THAT(told_, ElementsAre(false, true, false));
}

TEST_F(NotifierTrayTest, ABusWithoutATraySaysSo) {
  openIcon();
  tray_->setVisible(true);
  ASSERT_TRUE(waitUntil([this] { return !told_.empty(); }));
  EXPECT_THAT(told_, ElementsAre(false));
}

TEST(WithoutABusForTrays, ThereIsNone) {
  const auto tray = makeTrayIcon();
  std::vector<bool> told;
  tray->observeHost([&](bool isThere) { told.push_back(isThere); });
  tray->setVisible(true);
  ASSERT_TRUE(waitUntil([&] { return !told.empty(); }));
  EXPECT_THAT(told, ElementsAre(false));
}

}  // namespace
}  // namespace Nimbrel
