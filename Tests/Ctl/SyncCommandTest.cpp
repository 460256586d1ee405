#include "CtlFixture.h"
#include "Support/TerminalRun.h"

#include <gmock/gmock.h>

#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;
using Testing::TerminalRun;

constexpr const char* passphrase = "correct horse\n";

class SyncCommandTest : public Testing::CtlFixture {
 protected:
  void chooseVault() const { EXPECT_EQ(ctl({"settings", "syncRoot", vault()}).status, 0); }
  [[nodiscard]] std::string vault() const { return home_.path("vault"); }
  [[nodiscard]] std::unique_ptr<TerminalRun> onTerminal() const {
    return std::make_unique<TerminalRun>("nimbrelctl", QStringList{QStringLiteral("sync")},
                                         Testing::environmentOf(home_.folder().path()), TerminalRun::Input::Terminal);
  }
  /// Whether the program waits for something to read on its standard input.
  [[nodiscard]] static bool readsInput(const QProcess& process) {
    std::ifstream call("/proc/" + std::to_string(process.processId()) + "/syscall");
    long number = 0;
    unsigned long file = 1;
    call >> number >> std::hex >> file;
    return number == SYS_read && file == STDIN_FILENO;
  }
  [[nodiscard]] std::size_t vaultFiles() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(vault()), fs::directory_iterator()));
  }
};

TEST_F(SyncCommandTest, WithoutAFolderItFails) {
  const auto output = ctl({"sync"}, passphrase);
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: Choose a sync folder first\n");
}

TEST_F(SyncCommandTest, WithoutAFolderNoPassphraseIsAwaited) {
  const auto process = Testing::startProgram("nimbrelctl", {QStringLiteral("sync")}, home_.folder().path());
  // Nothing comes on its standard input, nor does that end.
  ASSERT_TRUE(process->waitForFinished(-1));
  EXPECT_EQ(process->exitCode(), 1);
  EXPECT_EQ(process->readAllStandardError(), "nimbrelctl: Choose a sync folder first\n");
}

TEST_F(SyncCommandTest, AShortPassphraseFails) {
  chooseVault();
  for (const char* input : {"", "\n", "1234567\n", "1234567\nmore that is not read"}) {
    const auto output = ctl({"sync"}, input);
    EXPECT_EQ(output.status, 1) << input;
    EXPECT_EQ(output.errors, "nimbrelctl: Sync failed: Use a passphrase with at least 8 characters\n");
  }
  EXPECT_FALSE(fs::exists(vault()));
}

TEST_F(SyncCommandTest, TwoHomesExchangeThroughOneVault) {
  const Testing::StoreHome other;
  const auto onOther = [&](const std::vector<std::string>& words) {
    QStringList arguments;
    for (const auto& word : words) arguments << QString::fromStdString(word);
    return Testing::runProgram("nimbrelctl", arguments, other.folder().path(), passphrase);
  };
  chooseVault();
  EXPECT_EQ(onOther({"settings", "syncRoot", vault()}).status, 0);
  Testing::writePicture(home_.inLibrary("2024/2024-01/a.png"), 60, 40, 1);
  Testing::writePicture(other.inLibrary("b.png"), 60, 40, 2);
  EXPECT_EQ(ctl({"sync"}, passphrase).output, "Encrypted sync complete · 1 sent · 0 received\n");
  EXPECT_EQ(onOther({"sync"}).output, "Encrypted sync complete · 1 sent · 1 received\n");
  EXPECT_EQ(ctl({"sync", "--json"}, passphrase).output,
            "{\"status\":\"Encrypted sync complete · 0 sent · 1 received\"}\n");
  EXPECT_THAT(json({"list"}).array(), SizeIs(2)) << "the scan that follows is done when the command is";
  for (const char* name : {"2024/2024-01/a.png", "b.png"}) {
    EXPECT_EQ(Testing::contentOf(home_.inLibrary(name)), Testing::contentOf(other.inLibrary(name)));
  }
  EXPECT_EQ(ctl({"sync"}, passphrase).output, "Encrypted sync complete · 0 sent · 0 received\n");
  EXPECT_EQ(onOther({"sync"}).output, "Encrypted sync complete · 0 sent · 0 received\n");
}

TEST_F(SyncCommandTest, ThePassphraseIsTheFirstLineAsItWasTyped) {
  chooseVault();
  home_.addFile(home_.inLibrary("a.png"));
  EXPECT_EQ(ctl({"sync"}, "  p\u00e4ss word \nsecond line\n").output,
            "Encrypted sync complete · 1 sent · 0 received\n");
  EXPECT_EQ(ctl({"sync"}, "  p\u00e4ss word ").output, "Encrypted sync complete · 0 sent · 0 received\n");
  EXPECT_EQ(ctl({"sync"}, "  p\u00e4ss word \r\n").output, "Encrypted sync complete · 0 sent · 0 received\n");
  EXPECT_EQ(ctl({"sync"}, "  p\u00e4ss word\n").output, "Encrypted sync complete · 1 sent · 0 received\n");
  EXPECT_EQ(ctl({"sync"}, "  p\u00e4ss word\r").output, "Encrypted sync complete · 1 sent · 0 received\n")
      << "without a line feed behind it, it belongs to the passphrase";
  EXPECT_EQ(ctl({"sync"}, "  p\u00e4ss word\r\r\n").output, "Encrypted sync complete · 0 sent · 0 received\n");
}

TEST_F(SyncCommandTest, APassphraseOfAnyLengthIsTakenWhole) {
  chooseVault();
  home_.addFile(home_.inLibrary("a.png"));
  const std::string longOne(100'000, 'x');
  EXPECT_EQ(ctl({"sync"}, longOne + "\n").output, "Encrypted sync complete · 1 sent · 0 received\n");
  EXPECT_EQ(ctl({"sync"}, longOne).output, "Encrypted sync complete · 0 sent · 0 received\n");
  EXPECT_EQ(ctl({"sync"}, longOne + "x\n").output, "Encrypted sync complete · 1 sent · 0 received\n");
}

TEST_F(SyncCommandTest, TakesNoArguments) { EXPECT_EQ(ctl({"sync", "word"}, passphrase).status, 2); }

TEST_F(SyncCommandTest, AnInterruptEndsItBetweenTwoFiles) {
  chooseVault();
  for (int i = 0; i < 1500; ++i) home_.addFile(home_.inLibrary(std::to_string(i) + ".png"));
  const auto process = Testing::startProgram("nimbrelctl", {QStringLiteral("sync")}, home_.folder().path());
  process->write(passphrase);
  process->closeWriteChannel();
  // Once there is something in the vault it runs.
  while (process->state() == QProcess::Running && (!fs::exists(vault()) || vaultFiles() < 100)) {
    process->waitForFinished(1);
  }
  ASSERT_EQ(::kill(static_cast<pid_t>(process->processId()), SIGINT), 0);
  ASSERT_TRUE(process->waitForFinished(-1));
  EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process->exitCode(), 1);
  EXPECT_EQ(process->readAllStandardError().toStdString(), "nimbrelctl: interrupted\n");
  EXPECT_LT(vaultFiles(), 1500U);
  for (const auto& entry : fs::directory_iterator(vault())) {
    EXPECT_EQ(entry.path().extension(), ".nimbrelvault") << entry.path();
  }
}

TEST_F(SyncCommandTest, AnInterruptEndsTheWaitingForAPassphrase) {
  chooseVault();
  const auto process = Testing::startProgram("nimbrelctl", {QStringLiteral("sync")}, home_.folder().path());
  while (process->state() == QProcess::Running && !readsInput(*process)) process->waitForFinished(1);
  ASSERT_EQ(::kill(static_cast<pid_t>(process->processId()), SIGINT), 0);
  ASSERT_TRUE(process->waitForFinished(-1));
  EXPECT_EQ(process->exitStatus(), QProcess::CrashExit);
  EXPECT_FALSE(fs::exists(vault()));
}

TEST_F(SyncCommandTest, OnATerminalThePassphraseIsTypedUnseen) {
  chooseVault();
  home_.addFile(home_.inLibrary("a.png"));
  const auto run = onTerminal();
  ASSERT_TRUE(run->shows("Passphrase: "));
  EXPECT_FALSE(run->echoes());
  run->type(passphrase);
  const auto result = run->result();
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "Encrypted sync complete · 1 sent · 0 received\n");
  EXPECT_THAT(run->screen(), Not(HasSubstr("horse")));
  EXPECT_TRUE(run->echoes());
  EXPECT_EQ(ctl({"sync"}, passphrase).output, "Encrypted sync complete · 0 sent · 0 received\n") << "it is the same";
}

TEST_F(SyncCommandTest, OnATerminalALongPassphraseIsTakenWhole) {
  chooseVault();
  home_.addFile(home_.inLibrary("a.png"));
  const auto longOne = std::string(4000, 'x') + "\n";
  const auto run = onTerminal();
  ASSERT_TRUE(run->shows("Passphrase: "));
  run->type(longOne);
  EXPECT_EQ(run->result().output, "Encrypted sync complete · 1 sent · 0 received\n");
  EXPECT_EQ(ctl({"sync"}, longOne).output, "Encrypted sync complete · 0 sent · 0 received\n");
}

TEST_F(SyncCommandTest, TheInterruptKeyAndTheEndOfInputCancel) {
  chooseVault();
  for (const char* keys : {"corr\x03", "\x04"}) {
    const auto run = onTerminal();
    ASSERT_TRUE(run->shows("Passphrase: "));
    run->type(keys);
    const auto result = run->result();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "nimbrelctl: interrupted\n");
    EXPECT_TRUE(run->echoes());
  }
  EXPECT_FALSE(fs::exists(vault()));
}

TEST_F(SyncCommandTest, WithoutAFolderNobodyIsAsked) {
  const auto run = onTerminal();
  EXPECT_EQ(run->result().errors, "nimbrelctl: Choose a sync folder first\n");
  EXPECT_EQ(run->screen(), "");
}

}  // namespace
}  // namespace Nimbrel
