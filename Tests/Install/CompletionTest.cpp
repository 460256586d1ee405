#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QRegularExpression>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

/// Bash, in a folder of the test's own, with our completion.
class CompletionTest : public ::testing::Test {
 protected:
  /// What bash offers for the last of these words.
  [[nodiscard]] std::vector<std::string> completions(const QStringList& words) const {
    const auto script = QStringLiteral("source " NIMBREL_RESOURCES
                                       "/completions/nimbrelctl; COMP_WORDS=(nimbrelctl \"$@\"); COMP_CWORD=$#;"
                                       "_nimbrelctl; printf '%s\\n' \"${COMPREPLY[@]}\"");
    QProcess bash;
    bash.setWorkingDirectory(QString::fromStdString(folder_.path()));
    bash.start(QStringLiteral("bash"), QStringList{QStringLiteral("-c"), script, QStringLiteral("bash")} + words);
    EXPECT_TRUE(bash.waitForFinished(-1));
    EXPECT_EQ(bash.readAllStandardError().toStdString(), "");
    std::vector<std::string> lines;
    for (const auto& line : bash.readAllStandardOutput().split('\n')) {
      if (!line.isEmpty()) lines.push_back(line.toStdString());
    }
    return lines;
  }

  Testing::TemporaryFolder folder_;
};

TEST_F(CompletionTest, OffersEveryCommand) {
  const auto usage = Testing::runProgram("nimbrelctl", {QStringLiteral("--help")}, folder_.path()).output;
  auto commands = QRegularExpression(QStringLiteral("^  ([a-z]+) "), QRegularExpression::MultilineOption)
                      .globalMatch(QString::fromStdString(usage));
  ASSERT_TRUE(commands.hasNext());
  const auto offered = completions({QString()});
  while (commands.hasNext()) EXPECT_THAT(offered, Contains(commands.next().captured(1).toStdString()));
  EXPECT_THAT(completions({QStringLiteral("fl")}), ElementsAre("flatten"));
}

TEST_F(CompletionTest, OffersTheOptionsOfACommand) {
  EXPECT_THAT(completions({QStringLiteral("purge"), QStringLiteral("--")}),
              UnorderedElementsAre("--days", "--inbox-only", "--trash", "--json", "--help", "--version"));
  EXPECT_THAT(completions({QStringLiteral("capture"), QStringLiteral("record")}),
              UnorderedElementsAre("recordArea", "recordScreen"));
}

TEST_F(CompletionTest, OffersTheValuesOfAnOption) {
  EXPECT_THAT(completions({QStringLiteral("list"), QStringLiteral("--sort"), QString()}),
              ElementsAre("newest", "oldest", "name"));
  EXPECT_THAT(completions({QStringLiteral("list"), QStringLiteral("--filter"), QStringLiteral("s")}),
              ElementsAre("sensitive", "saved:", "similar:", "smart:", "stack:"));
  EXPECT_THAT(completions({QStringLiteral("list"), QStringLiteral("--query"), QString()}), ElementsAre());
}

TEST_F(CompletionTest, OffersFilesWhereFilesAreMeant) {
  folder_.write("my shot.png", "");
  EXPECT_THAT(completions({QStringLiteral("read"), QStringLiteral("my")}), ElementsAre("my shot.png"));
  EXPECT_THAT(completions({QStringLiteral("flatten"), QStringLiteral("--marks"), QStringLiteral("my")}),
              ElementsAre("my shot.png"));
  EXPECT_THAT(completions({QStringLiteral("trash"), QStringLiteral("my")}), Not(Contains("my shot.png")));
}

}  // namespace
}  // namespace Nimbrel
