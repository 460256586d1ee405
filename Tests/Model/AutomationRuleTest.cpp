#include "Model/ProductivityModels.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace Nimbrel {
namespace {

AutomationRule rule() {
  return {.id = QUuid::createUuid(),
          .name = "Receipts",
          .containsText = "total",
          .source = "safari",
          .tag = "money",
          .project = "Täxes",
          .favorite = true,
          .fileToLibrary = true,
          .enabled = false};
}

TEST(AutomationRule, ComesBackFromItsJson) {
  const std::vector rules{rule(), AutomationRule{.id = QUuid::createUuid()}};
  EXPECT_EQ(decodedRules(encodedRules(rules)), rules);
}

TEST(AutomationRule, HasExactlyTheFieldNamesAsKeys) {
  const auto object = toJson(std::vector{rule()}).first().toObject();
  EXPECT_EQ(object.keys().join(QLatin1Char(' ')),
            QStringLiteral("containsText enabled favorite fileToLibrary id name project source tag"));
}

TEST(AutomationRule, EveryKeyIsRequired) {
  const auto complete = toJson(std::vector{rule()}).first().toObject();
  for (const auto& key : complete.keys()) {
    auto object = complete;
    object.remove(key);
    EXPECT_FALSE(rulesFromJson({object})) << key.toStdString();
  }
}

TEST(AutomationRule, AValueOfAnotherTypeMakesTheListUnreadable) {
  auto object = toJson(std::vector{rule()}).first().toObject();
  object.insert(QStringLiteral("enabled"), 1);
  EXPECT_FALSE(rulesFromJson({object}));
  object.insert(QStringLiteral("enabled"), true);
  object.insert(QStringLiteral("id"), QStringLiteral("not an identifier"));
  EXPECT_FALSE(rulesFromJson({object}));
}

TEST(AutomationRule, BytesThatAreNoListHoldNoRules) {
  EXPECT_FALSE(decodedRules("{}"));
  EXPECT_FALSE(decodedRules("[1"));
  EXPECT_EQ(decodedRules("[]"), std::vector<AutomationRule>{});
}

}  // namespace
}  // namespace Nimbrel
