#include "CtlFixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::SizeIs;

constexpr const char* passphrase = "correct horse\n";

class SyncCommandTest : public Testing::CtlFixture {
 protected:
  void chooseVault() const { EXPECT_EQ(ctl({"settings", "syncRoot", vault()}).status, 0); }
  [[nodiscard]] std::string vault() const { return home_.path("vault"); }
  [[nodiscard]] std::size_t vaultFiles() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(vault()), fs::directory_iterator()));
  }
};

TEST_F(SyncCommandTest, WithoutAFolderItFails) {
  const auto output = ctl({"sync"}, passphrase);
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.errors, "nimbrelctl: Choose a sync folder first\n");
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
  ASSERT_TRUE(process->waitForFinished());
  EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process->exitCode(), 1);
  EXPECT_EQ(process->readAllStandardError(), "nimbrelctl: interrupted\n");
  EXPECT_LT(vaultFiles(), 1500U);
  for (const auto& entry : fs::directory_iterator(vault())) {
    EXPECT_EQ(entry.path().extension(), ".nimbrelvault") << entry.path();
  }
}

TEST_F(SyncCommandTest, AnInterruptEndsTheWaitingForAPassphrase) {
  const auto process = Testing::startProgram("nimbrelctl", {QStringLiteral("sync")}, home_.folder().path());
  ASSERT_EQ(::kill(static_cast<pid_t>(process->processId()), SIGINT), 0);
  ASSERT_TRUE(process->waitForFinished());
  EXPECT_FALSE(fs::exists(vault()));
}

}  // namespace
}  // namespace Nimbrel
