#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QRegularExpression>
#include <QString>

namespace Nimbrel {
namespace {

/// A manual page as it reads, without what sets it.
QString plainPage(const std::string& name) {
  auto text = QString::fromStdString(Testing::contentOf(std::string(NIMBREL_RESOURCES "/man/") + name));
  text.replace(QLatin1String("\\-"), QLatin1String("-"));
  text.remove(QRegularExpression(QStringLiteral("\\\\f[A-Z]")));
  text.remove(u'"');
  return text;
}

/// The first word of each line that begins with two blanks.
QStringList commandsOf(const std::string& usage) {
  QStringList commands;
  auto lines = QRegularExpression(QStringLiteral("^  ([a-z]+) "), QRegularExpression::MultilineOption)
                   .globalMatch(QString::fromStdString(usage));
  while (lines.hasNext()) commands << lines.next().captured(1);
  return commands;
}

class ManualTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string usageOf(const QStringList& words) const {
    return Testing::runProgram("nimbrelctl", words + QStringList{QStringLiteral("--help")}, home_.path()).output;
  }

  Testing::TemporaryFolder home_;
};

TEST_F(ManualTest, TellsOfEveryCommandAndOption) {
  const auto page = plainPage("nimbrelctl.1");
  const auto commands = commandsOf(usageOf({}));
  ASSERT_GT(commands.size(), 20);
  for (const auto& command : commands) {
    const QRegularExpression entry(QStringLiteral("^\\.TP\\n\\.BR? %1( |,|$)").arg(command),
                                   QRegularExpression::MultilineOption);
    EXPECT_TRUE(entry.match(page).hasMatch()) << command.toStdString();
    auto options =
        QRegularExpression(QStringLiteral("--[a-z-]+")).globalMatch(QString::fromStdString(usageOf({command})));
    while (options.hasNext()) {
      const auto option = options.next().captured();
      EXPECT_TRUE(page.contains(option)) << command.toStdString() << " " << option.toStdString();
    }
  }
}

TEST_F(ManualTest, TellsOfEveryActionOfTheLauncher) {
  const auto page = plainPage("nimbrel.1").toStdString();
  const auto entry = Testing::contentOf(NIMBREL_RESOURCES "/applications/com.halderquist.nimbrel.desktop");
  auto actions =
      QRegularExpression(QStringLiteral("\\[Desktop Action ([a-z]+)\\]")).globalMatch(QString::fromStdString(entry));
  ASSERT_TRUE(actions.hasNext());
  while (actions.hasNext()) {
    EXPECT_THAT(page, ::testing::ContainsRegex("\\.BR? " + actions.next().captured(1).toStdString()));
  }
}

}  // namespace
}  // namespace Nimbrel
