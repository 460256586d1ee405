#include "Linux/Authentication/PamOwnerAuthentication.h"

#include "Support/PamServices.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <chrono>

namespace Nimbrel {

namespace {

using ::testing::AnyOf;
using Testing::PamServices;
using Testing::TemporaryFolder;

constexpr const char* asked = "Reveal it\nPassword:  (hidden)\n";

/// A process that authenticates against passwords of our own, and says what it was asked.
class PamTest : public ::testing::Test {
 protected:
  /// `answers` in turn; "-" cancels the question.
  [[nodiscard]] std::string outcomeOf(const QStringList& answers, const char* task = "authenticate") {
    start(task, answers);
    EXPECT_TRUE(helper_.waitForFinished()) << "still waits";
    EXPECT_EQ(helper_.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(helper_.exitCode(), 0) << helper_.readAllStandardError().toStdString();
    return helper_.readAllStandardOutput().toStdString();
  }
  void start(const char* task, const QStringList& answers) {
    helper_.setProcessEnvironment(services_.environment());
    helper_.start(QStringLiteral(NIMBREL_HELPER_PROGRAM), QStringList{QString::fromLatin1(task)} + answers);
    ASSERT_TRUE(helper_.waitForStarted()) << helper_.errorString().toStdString();
  }

  PamServices services_;
  QProcess helper_;
};

TEST_F(PamTest, TheRightPasswordIsGranted) {
  EXPECT_EQ(outcomeOf({QStringLiteral("secret")}), std::string(asked) + "end\ngranted\n");
}

TEST_F(PamTest, AWrongPasswordIsRefused) {
  EXPECT_EQ(outcomeOf({QStringLiteral("guess")}), std::string(asked) + "end\nrefused\n");
}

TEST_F(PamTest, ACancelledQuestionIsRefused) {
  EXPECT_EQ(outcomeOf({QStringLiteral("-")}), std::string(asked) + "end\nrefused\n");
}

TEST_F(PamTest, AfterARefusalItCanBeAskedAgain) {
  const auto once = std::string(asked) + "end\n";
  EXPECT_EQ(outcomeOf({QStringLiteral("guess"), QStringLiteral("secret")}, "authenticate-twice"),
            once + "refused\n" + once + "granted\n");
}

TEST_F(PamTest, WhoWantsAnotherTryIsAskedAnewUntilItIsGranted) {
  EXPECT_EQ(outcomeOf({QStringLiteral("guess"), QStringLiteral("worse"), QStringLiteral("secret")},
                      "authenticate-trying-again"),
            std::string(asked) + "once more\n" + asked + "once more\n" + asked + "end\ngranted\n");
}

TEST_F(PamTest, ACancelledQuestionEndsTheTrying) {
  EXPECT_EQ(outcomeOf({QStringLiteral("guess"), QStringLiteral("-")}, "authenticate-trying-again"),
            std::string(asked) + "once more\n" + asked + "end\nrefused\n");
}

TEST_F(PamTest, WhereNothingIsAskedNothingIsTriedAgain) {
  services_.setModules("auth required pam_deny.so\naccount required MATRIX\n");
  EXPECT_EQ(outcomeOf({}, "authenticate-trying-again"), "Reveal it\nend\nrefused\n");
}

TEST_F(PamTest, MessagesAreShownAndOpenQuestionsAskedOpenly) {
  services_.setModules(
      "auth optional pam_echo.so Put your finger on the reader\nauth optional CHATTY error\n"
      "auth required MATRIX echo\naccount required MATRIX\n");
  const std::string error = "Authentication generated an error\n";
  EXPECT_EQ(outcomeOf({QStringLiteral("secret")}), "Reveal it\nPut your finger on the reader\n" + error + error +
                                                       error + "Password:  (shown)\nend\ngranted\n");
}

TEST_F(PamTest, ModulesAfterACancelledQuestionAskNothingMore) {
  services_.setModules("auth optional MATRIX\nauth required MATRIX\naccount required MATRIX\n");
  EXPECT_EQ(outcomeOf({QStringLiteral("-"), QStringLiteral("secret")}), std::string(asked) + "end\nrefused\n");
}

TEST_F(PamTest, AnAccountThatMayNotUseTheServiceIsRefusedInSpiteOfItsPassword) {
  services_.setModules("auth required MATRIX\naccount required pam_deny.so\n");
  EXPECT_EQ(outcomeOf({QStringLiteral("secret")}), std::string(asked) + "end\nrefused\n");
}

TEST_F(PamTest, APasswordIsNotCutAtAZeroOrAtTheBound) {
  EXPECT_EQ(outcomeOf({QStringLiteral("secret")}, "authenticate-with-zero"), std::string(asked) + "end\nrefused\n");
  const auto start = QString(511, QLatin1Char('x'));
  services_.setPassword(start.toStdString());
  EXPECT_EQ(outcomeOf({start + QLatin1Char('y')}), std::string(asked) + "end\nrefused\n");
}

TEST_F(PamTest, WithoutAPromptNobodyCanBeAsked) {
  EXPECT_EQ(outcomeOf({}, "authenticate-without-prompt"), "cannot evaluate\nrefused\n");
}

TEST_F(PamTest, WhatIsAskedDuringAnotherAuthenticationIsRefused) {
  // The question comes from a thread of its own, and may be there before the refusal is told.
  EXPECT_THAT(outcomeOf({QStringLiteral("secret")}, "authenticate-at-once"),
              AnyOf("Reveal it\nrefused\nPassword:  (hidden)\nend\ngranted\n",
                    "Reveal it\nPassword:  (hidden)\nrefused\nend\ngranted\n"));
}

TEST_F(PamTest, TakingThePromptBackRefusesAndIgnoresALateAnswer) {
  EXPECT_EQ(outcomeOf({}, "authenticate-and-take-back"), std::string(asked) + "end\nrefused\n");
}

TEST_F(PamTest, DestructionDoesNotWaitForAnAnswerAndIgnoresALateOne) {
  EXPECT_EQ(outcomeOf({}, "authenticate-and-destroy"), std::string(asked) + "end\ndestroyed\n");
}

TEST_F(PamTest, NothingIsToldOnceTheContextIsGone) {
  EXPECT_EQ(outcomeOf({QStringLiteral("secret")}, "authenticate-without-context"), std::string(asked) + "end\n");
}

/// With a module that makes everybody wait for ten minutes after a wrong password.
class PamDelay : public PamTest {
 protected:
  PamDelay() {
    services_.setModules(
        "auth optional pam_faildelay.so delay=600000000\nauth required MATRIX\n"
        "account required MATRIX\n");
  }
};

TEST_F(PamDelay, IsNotWaitedForInDestruction) {
  EXPECT_EQ(outcomeOf({QStringLiteral("guess")}, "authenticate-wrongly-and-destroy"),
            std::string(asked) + "end\ndestroyed\n");
}

TEST_F(PamDelay, DoesNotFollowACancelledQuestion) {
  EXPECT_EQ(outcomeOf({QStringLiteral("-")}), std::string(asked) + "end\nrefused\n");
}

TEST_F(PamDelay, DoesNotFollowTheRightPassword) {
  EXPECT_EQ(outcomeOf({QStringLiteral("secret")}), std::string(asked) + "end\ngranted\n");
}

TEST_F(PamDelay, HoldsTheRefusalOfAWrongPasswordBack) {
  services_.setModules("auth optional pam_faildelay.so delay=1000000\nauth required MATRIX\naccount required MATRIX\n");
  const auto began = std::chrono::steady_clock::now();
  EXPECT_EQ(outcomeOf({QStringLiteral("guess")}), std::string(asked) + "end\nrefused\n");
  // The system varies what was asked for by up to a half.
  EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(450));
}

TEST(PamService, IsOurOwnWhereItIsInstalledAndThatOfALoginElsewhere) {
  const TemporaryFolder folder;
  const std::vector<std::string> folders{folder.path("etc"), folder.path("vendor")};
  EXPECT_EQ(pamService(folders), "login");
  folder.write("vendor/nimbrel", "");
  EXPECT_EQ(pamService(folders), "nimbrel");
}

TEST(PamService, OfOursIsCompleteOnThisSystem) {
  const auto rules = Testing::contentOf(NIMBREL_PAM_SERVICE);
  for (const auto* stack : {"common-auth", "common-account"}) {
    EXPECT_THAT(rules, ::testing::HasSubstr(std::string("\n@include ") + stack + "\n"));
    EXPECT_FALSE(Testing::contentOf(std::string("/etc/pam.d/") + stack).empty());
  }
}

}  // namespace

}  // namespace Nimbrel
