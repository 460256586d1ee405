#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <string>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;
using Testing::ProgramOutput;

class DetectCommand : public ::testing::Test {
 protected:
  [[nodiscard]] ProgramOutput detect(const QByteArray& input, const QStringList& options = {}) const {
    return Testing::runProgram("nimbrelctl", QStringList{QStringLiteral("detect")} + options, home_.path(), input);
  }
  [[nodiscard]] QJsonObject json(const QByteArray& input) const {
    const auto output = detect(input, {QStringLiteral("--json")});
    EXPECT_EQ(output.status, 0) << output.errors;
    return QJsonDocument::fromJson(QByteArray::fromStdString(output.output)).object();
  }
  static QJsonObject item(const QString& kind, const QString& text, const QJsonValue& url, const QJsonValue& date) {
    return {{QStringLiteral("kind"), kind},
            {QStringLiteral("text"), text},
            {QStringLiteral("url"), url},
            {QStringLiteral("date"), date}};
  }

 private:
  Testing::TemporaryFolder home_;
};

TEST_F(DetectCommand, FindsSecretsInItsInput) {
  const auto found = json("mail ann@example.com, card 4111 1111 1111 1111");
  EXPECT_EQ(found.value(QStringLiteral("sensitive")),
            QJsonValue(QJsonArray{QStringLiteral("Card"), QStringLiteral("Email")}));
  EXPECT_EQ(found.value(QStringLiteral("matches")),
            QJsonValue(QJsonArray{QStringLiteral("4111 1111 1111 1111"), QStringLiteral("ann@example.com")}));
}

TEST_F(DetectCommand, GivesEachItemWithWhatOpensIt) {
  const auto found = json("ann@example.com www.example.com 2026-11-21T14:05:33Z +49 30 901820");
  EXPECT_EQ(found.value(QStringLiteral("items")).toArray(),
            (QJsonArray{
                item(QStringLiteral("Email"), QStringLiteral("ann@example.com"),
                     QStringLiteral("mailto:ann@example.com"), QJsonValue::Null),
                item(QStringLiteral("Link"), QStringLiteral("http://www.example.com"),
                     QStringLiteral("http://www.example.com"), QJsonValue::Null),
                item(QStringLiteral("Date"), QStringLiteral("2026-11-21T14:05:33Z"), QJsonValue::Null, 1'795'269'933.0),
                item(QStringLiteral("Phone"), QStringLiteral("+49 30 901820"), QStringLiteral("tel:+4930901820"),
                     QJsonValue::Null)}));
}

TEST_F(DetectCommand, OfNothingGivesThreeEmptyLists) {
  const QJsonObject nothing{{QStringLiteral("items"), QJsonArray()},
                            {QStringLiteral("sensitive"), QJsonArray()},
                            {QStringLiteral("matches"), QJsonArray()}};
  EXPECT_EQ(json(""), nothing);
  EXPECT_EQ(json("nothing at all"), nothing);
}

TEST_F(DetectCommand, TellsPeopleEachItemOnALine) {
  const auto output = detect("12 Main Street\nSpringfield, IL 62704; 2026-11-21");
  EXPECT_EQ(output.status, 0);
  EXPECT_THAT(output.output, HasSubstr("address: 12 Main Street Springfield, IL 62704  (https://"));
  EXPECT_THAT(output.output, HasSubstr("\ndate: 2026-11-21  (2026-11-21 12:00)\n"));
  EXPECT_EQ(std::ranges::count(output.output, '\n'), 2);
}

TEST_F(DetectCommand, BytesThatAreNoTextDoNoHarm) {
  const auto found = json(QByteArray("\xFF\0 www.example.com", 18));
  EXPECT_EQ(found.value(QStringLiteral("items")).toArray().size(), 1);
}

}  // namespace
}  // namespace Nimbrel
