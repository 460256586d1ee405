#include "Support/PamServices.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/TerminalRun.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <sys/types.h>
#include <unistd.h>

#include <csignal>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Testing::StoreHome;
using Testing::TerminalRun;

class RevealTest : public ::testing::Test {
 protected:
  RevealTest() {
    const auto store = home_.open(ProcessRole::tool);
    Testing::writePicture(home_.path("a.png"));
    Testing::writePicture(home_.path("b.png"));
    store->importFiles({home_.path("a.png"), home_.path("b.png")});
    secret_ = Testing::shotNamed(*store, "a.png")->id;
    clear_ = Testing::shotNamed(*store, "b.png")->id;
    store->database().setOCR(secret_, "password: abcdef", {"Password"});
  }

  [[nodiscard]] QProcessEnvironment environment() const {
    return services_.in(Testing::environmentOf(home_.folder().path()));
  }
  [[nodiscard]] std::unique_ptr<TerminalRun> reveal(const std::vector<ShotID>& ids) const {
    QStringList arguments{QStringLiteral("show"), QStringLiteral("--reveal")};
    for (const auto id : ids) arguments << QString::number(id);
    return std::make_unique<TerminalRun>("nimbrelctl", arguments, environment());
  }
  [[nodiscard]] std::unique_ptr<TerminalRun> list(const QStringList& options) const {
    const auto arguments = QStringList{QStringLiteral("list"), QStringLiteral("--reveal")} + options;
    return std::make_unique<TerminalRun>("nimbrelctl", arguments, environment());
  }
  static void expectRefusal(TerminalRun& run) {
    const auto result = run.result();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "nimbrelctl: Sensitive preview remains locked\n");
    EXPECT_TRUE(run.echoes());
  }

  StoreHome home_;
  Testing::PamServices services_;
  ShotID secret_ = 0;
  ShotID clear_ = 0;
};

TEST_F(RevealTest, TheRightPasswordShowsEverything) {
  const auto run = reveal({secret_, clear_});
  ASSERT_TRUE(run->shows("Reveal sensitive screenshot content"));
  ASSERT_TRUE(run->shows("Password:"));
  EXPECT_FALSE(run->echoes());
  run->type("secret\n");
  const auto result = run->result();
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("password: abcdef"));
  EXPECT_THAT(result.output, HasSubstr("b.png"));
  EXPECT_THAT(run->screen(), Not(HasSubstr("secret")));
  EXPECT_TRUE(run->echoes());
}

TEST_F(RevealTest, AWrongPasswordFailsAndPrintsNothing) {
  const auto run = reveal({clear_, secret_});
  ASSERT_TRUE(run->shows("Password:"));
  run->type("guess\n");
  expectRefusal(*run);
}

TEST_F(RevealTest, TheInterruptKeyCancels) {
  const auto run = reveal({secret_});
  ASSERT_TRUE(run->shows("Password:"));
  run->type("secr\x03");
  expectRefusal(*run);
}

TEST_F(RevealTest, TheEndOfInputCancels) {
  const auto run = reveal({secret_});
  ASSERT_TRUE(run->shows("Password:"));
  run->type("\x04");
  expectRefusal(*run);
}

TEST_F(RevealTest, ALineThatComesInPiecesAndCorrectedIsOneLine) {
  const auto run = reveal({secret_});
  ASSERT_TRUE(run->shows("Password:"));
  run->type("sec\x04");
  run->type("rez\x7Ft\n");
  EXPECT_EQ(run->result().status, 0);
}

TEST_F(RevealTest, ASignalPutsTheTerminalBack) {
  const auto run = reveal({secret_});
  ASSERT_TRUE(run->shows("Password:"));
  ASSERT_FALSE(run->echoes());
  run->signal(SIGTERM);
  const auto result = run->result();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_TRUE(run->echoes());
}

TEST_F(RevealTest, WithoutATerminalItFailsAndPrintsNothing) {
  QProcess process;
  process.setChildProcessModifier([] { ::setsid(); });
  process.setProcessEnvironment(environment());
  process.start(Testing::programPath("nimbrelctl"),
                {QStringLiteral("show"), QStringLiteral("--reveal"), QString::number(secret_)});
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitCode(), 1);
  EXPECT_EQ(process.readAllStandardOutput(), "");
  EXPECT_EQ(process.readAllStandardError(), "nimbrelctl: Cannot unlock sensitive previews on this Mac\n");
}

TEST_F(RevealTest, NothingIsAskedForShotsThatAreNotProtected) {
  const auto run = reveal({clear_});
  EXPECT_EQ(run->result().status, 0);
  EXPECT_EQ(run->screen(), "");
}

TEST_F(RevealTest, AListIsRevealedToo) {
  const auto run = list({QStringLiteral("--json")});
  ASSERT_TRUE(run->shows("Password:"));
  run->type("secret\n");
  const auto result = run->result();
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("password: abcdef"));
}

TEST_F(RevealTest, AListThatIsRefusedPrintsNothing) {
  const auto run = list({});
  ASSERT_TRUE(run->shows("Password:"));
  run->type("guess\n");
  expectRefusal(*run);
}

TEST_F(RevealTest, NothingIsAskedForAListWithoutProtectedShots) {
  const auto run = list({QStringLiteral("--filter"), QStringLiteral("favorites")});
  EXPECT_EQ(run->result().status, 0);
  EXPECT_EQ(run->screen(), "");
}

}  // namespace
}  // namespace Nimbrel
