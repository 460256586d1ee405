#include "Linux/Desktop/PortalAppearance.h"

#include "Screencapture/PortalDouble.h"
#include "Support/SessionBus.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>

#include <array>
#include <vector>

namespace Nimbrel {

namespace {

using Testing::waitUntil;
using Settings = QMap<QString, QVariantMap>;

const QString appearanceNamespace = QStringLiteral("org.freedesktop.appearance");

QVariant accent(const std::array<double, 3>& parts) {
  QDBusArgument argument;
  argument.beginStructure();
  for (const auto part : parts) argument << part;
  argument.endStructure();
  return QVariant::fromValue(argument);
}

class PortalAppearanceTest : public ::testing::Test {
 protected:
  PortalAppearanceTest() { qDBusRegisterMetaType<Settings>(); }

  void answerWith(const QVariantMap& settings) {
    portal_.behave(QStringLiteral("ReadAll"), [this, settings](const QDBusMessage& call) {
      portal_.reply(call, QVariant::fromValue(Settings{{appearanceNamespace, settings}}));
    });
  }
  void tell(const QString& key, const QVariant& value, const QString& group = appearanceNamespace) {
    portal_.announce(QStringLiteral("Settings"), QStringLiteral("SettingChanged"),
                     {group, key, QVariant::fromValue(QDBusVariant(value))});
  }
  void observe() {
    appearance_->observe([this](const Appearance& told) { told_.push_back(told); });
  }
  [[nodiscard]] bool waitForAnswers(std::size_t count) {
    return waitUntil([&] { return told_.size() >= count; });
  }

  Testing::SessionBus bus_;
  Testing::PortalDouble portal_;
  std::vector<Appearance> told_;
  std::unique_ptr<DesktopAppearance> appearance_ = makePortalAppearance();
};

TEST_F(PortalAppearanceTest, NothingIsAskedBeforeSomebodyListens) {
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(appearance_->current(), Appearance());
  EXPECT_TRUE(portal_.calls(QStringLiteral("ReadAll")).empty());
}

TEST_F(PortalAppearanceTest, TheAnswerHasSchemeAccentAndContrast) {
  answerWith({{QStringLiteral("color-scheme"), 1U},
              {QStringLiteral("accent-color"), accent({0.0, 0.4, 1.0})},
              {QStringLiteral("contrast"), 1U}});
  observe();
  EXPECT_TRUE(told_.empty()) << "before the event loop ran";
  ASSERT_TRUE(waitForAnswers(1));
  EXPECT_EQ(told_.front().scheme, Appearance::Scheme::Dark);
  ASSERT_TRUE(told_.front().accent);
  EXPECT_EQ(told_.front().accent->name(), QStringLiteral("#0066ff"));
  EXPECT_TRUE(told_.front().hasHighContrast);
  EXPECT_EQ(appearance_->current(), told_.front());
}

TEST_F(PortalAppearanceTest, AnAccentOutOfRangeIsNone) {
  answerWith({{QStringLiteral("color-scheme"), 2U}, {QStringLiteral("accent-color"), accent({-1, -1, -1})}});
  observe();
  ASSERT_TRUE(waitForAnswers(1));
  EXPECT_EQ(told_.front().scheme, Appearance::Scheme::Light);
  EXPECT_FALSE(told_.front().accent);
}

TEST_F(PortalAppearanceTest, ValuesOfAnotherKindChangeNothing) {
  answerWith({{QStringLiteral("color-scheme"), QStringLiteral("dark")},
              {QStringLiteral("accent-color"), QStringLiteral("blue")},
              {QStringLiteral("contrast"), 1U}});
  observe();
  ASSERT_TRUE(waitForAnswers(1));
  EXPECT_EQ(told_.front(), (Appearance{.scheme = {}, .accent = {}, .hasHighContrast = true}));
}

TEST_F(PortalAppearanceTest, TellsWhatChangesWhileItRuns) {
  answerWith({{QStringLiteral("color-scheme"), 1U}});
  observe();
  ASSERT_TRUE(waitForAnswers(1));
  tell(QStringLiteral("color-scheme"), 1U, QStringLiteral("org.gnome.desktop.interface"));
  tell(QStringLiteral("color-scheme"), 1U);
  tell(QStringLiteral("color-scheme"), 2U);
  tell(QStringLiteral("accent-color"), accent({1, 0, 0}));
  ASSERT_TRUE(waitForAnswers(3));
  EXPECT_EQ(told_.size(), 3U) << "what is as it was is not told";
  EXPECT_EQ(told_[1].scheme, Appearance::Scheme::Light);
  EXPECT_EQ(told_[2].accent, QColor(Qt::red));
}

TEST_F(PortalAppearanceTest, ARefusalLeavesWhatThereWas) {
  observe();
  ASSERT_TRUE(waitUntil([this] { return !portal_.calls(QStringLiteral("ReadAll")).empty(); }));
  tell(QStringLiteral("contrast"), 1U);
  ASSERT_TRUE(waitForAnswers(1));
  EXPECT_FALSE(told_.front().scheme);
}

TEST(WithoutASessionBus, NothingIsTold) {
  const auto appearance = makePortalAppearance();
  appearance->observe([](const Appearance&) { FAIL(); });
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(appearance->current(), Appearance());
}

}  // namespace

}  // namespace Nimbrel
