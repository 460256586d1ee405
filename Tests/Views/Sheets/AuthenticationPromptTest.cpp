#include "Views/Sheets/AuthenticationPrompt.h"

#include "Views/Sheets/AuthenticationSheet.h"
#include "Views/Sheets/SheetFixture.h"

#include <QAccessible>
#include <QPushButton>
#include <QTest>

#include <optional>
#include <utility>

namespace Nimbrel {

namespace {

using Echo = CredentialPrompt::Echo;

/// Knows one password, looks at an answer when the test says so, and refuses who takes the prompt back, as the
/// system's does.
class PasswordAuthentication final : public OwnerAuthentication {
 public:
  void setPrompt(CredentialPrompt* prompt) override {
    if (prompt != prompt_ && then_) finish(false);
    prompt_ = prompt;
  }
  [[nodiscard]] bool canEvaluate() const override { return prompt_ != nullptr; }
  void evaluate(QObject* /*context*/, const std::string& reason, Then then) override {
    then_ = std::move(then);
    reason_ = reason;
    begin();
  }

  /// Looks at what was answered.
  void look() {
    const auto answer = std::exchange(answer_, std::nullopt);
    if (answer == "secret") return finish(true);
    prompt_->wantsAnotherTry() ? begin() : finish(false);
  }
  [[nodiscard]] const std::optional<std::string>& answer() const { return answer_; }

  Echo echo = Echo::Off;

 private:
  void begin() {
    prompt_->show(reason_);
    prompt_->ask("Password: ", echo, [this](std::optional<std::string> text) { answer_ = std::move(text); });
  }
  void finish(bool granted) {
    prompt_->end();
    std::exchange(then_, {})(granted);
  }

  CredentialPrompt* prompt_ = nullptr;
  std::string reason_;
  std::optional<std::string> answer_;
  Then then_;
};

class AuthenticationPromptTest : public Testing::SheetFixture {
 protected:
  void begin() {
    authentication_.evaluate(&window_, "Reveal sensitive screenshot content",
                             [this](bool granted) { outcome_ = granted; });
  }
  [[nodiscard]] AuthenticationSheet* sheet() const {
    for (auto* widget : QApplication::topLevelWidgets()) {
      auto* one = qobject_cast<AuthenticationSheet*>(widget);
      if (one != nullptr && one->isVisible()) return one;
    }
    return nullptr;
  }
  [[nodiscard]] QLineEdit* field() const { return in<QLineEdit>(*sheet(), "authentication.answer"); }
  [[nodiscard]] std::string refusal() const {
    return in<QLabel>(*sheet(), "authentication.refusal")->text().toStdString();
  }
  void answer(const char* password) const {
    QTest::keyClicks(field(), QString::fromLatin1(password));
    QTest::keyClick(field(), Qt::Key_Return);
  }

  PasswordAuthentication authentication_;
  std::optional<AuthenticationPrompt> prompt_{std::in_place, authentication_, window_};
  std::optional<bool> outcome_;
};

TEST_F(AuthenticationPromptTest, TheRightPasswordGrantsAndCloses) {
  begin();
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(in<QLabel>(*sheet(), "authentication.message")->text().toStdString(),
            "Reveal sensitive screenshot content");
  EXPECT_EQ(in<QLabel>(*sheet(), "authentication.question")->text(), QStringLiteral("Password"));
  answer("secret");
  EXPECT_EQ(authentication_.answer(), "secret");
  EXPECT_FALSE(outcome_) << "nothing waits within the sheet";
  authentication_.look();
  EXPECT_EQ(outcome_, true);
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(AuthenticationPromptTest, WhatIsTypedIsHiddenAndDoesNotStay) {
  begin();
  QTest::keyClicks(field(), QStringLiteral("secret"));
  EXPECT_EQ(field()->echoMode(), QLineEdit::Password);
  EXPECT_FALSE(field()->displayText().contains(QLatin1Char('s')));
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(field())->state().passwordEdit);
  QTest::keyClick(field(), Qt::Key_Return);
  EXPECT_TRUE(field()->text().isEmpty());
}

TEST_F(AuthenticationPromptTest, ItStandsOverTheWindowUnlessThatIsHidden) {
  begin();
  EXPECT_EQ(sheet()->parentWidget(), &window_);
  QTest::keyClick(field(), Qt::Key_Escape);
  window_.hide();
  begin();
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(sheet()->parentWidget(), nullptr);
  answer("secret");
  authentication_.look();
  EXPECT_EQ(outcome_, true);
}

TEST_F(AuthenticationPromptTest, AnOpenQuestionIsShown) {
  authentication_.echo = Echo::On;
  begin();
  EXPECT_EQ(field()->echoMode(), QLineEdit::Normal);
}

TEST_F(AuthenticationPromptTest, WhileTheAnswerIsLookedAtNothingCanBeTyped) {
  begin();
  answer("guess");
  EXPECT_FALSE(field()->isEnabled());
  EXPECT_FALSE(in<QPushButton>(*sheet(), "authentication.unlock")->isEnabled());
  EXPECT_TRUE(in<QPushButton>(*sheet(), "authentication.cancel")->isEnabled());
}

TEST_F(AuthenticationPromptTest, AWrongPasswordIsToldAndAskedForAgain) {
  begin();
  EXPECT_EQ(refusal(), "");
  answer("guess");
  authentication_.look();
  EXPECT_EQ(refusal(), "That was not right. Try again.");
  EXPECT_TRUE(field()->isEnabled());
  EXPECT_FALSE(outcome_);
  answer("secret");
  EXPECT_EQ(refusal(), "");
  authentication_.look();
  EXPECT_EQ(outcome_, true);
}

TEST_F(AuthenticationPromptTest, AWrongPasswordShakesTheFieldAndLeavesItWhereItWas) {
  begin();
  const auto rest = field()->x();
  int furthest = 0;
  class Watcher final : public QObject {
   public:
    Watcher(int rest, int& furthest) : rest_(rest), furthest_(furthest) {}
    bool eventFilter(QObject* object, QEvent* event) override {
      if (event->type() == QEvent::Move) {
        furthest_ = std::max(furthest_, std::abs(static_cast<QWidget*>(object)->x() - rest_));
      }
      return false;
    }

   private:
    int rest_;
    int& furthest_;
  } watcher(rest, furthest);
  field()->installEventFilter(&watcher);
  answer("guess");
  authentication_.look();
  EXPECT_TRUE(QTest::qWaitFor([&] { return furthest >= 3 && field()->x() == rest; }));
}

TEST_F(AuthenticationPromptTest, CancellingRefuses) {
  begin();
  QTest::keyClick(sheet(), Qt::Key_Escape);
  EXPECT_EQ(outcome_, false);
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(AuthenticationPromptTest, CancellingWhileTheAnswerIsLookedAtRefusesEvenTheRightPassword) {
  begin();
  answer("secret");
  in<QPushButton>(*sheet(), "authentication.cancel")->click();
  EXPECT_EQ(outcome_, false);
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(AuthenticationPromptTest, AfterCancellingItCanBeAskedAgain) {
  begin();
  QTest::keyClick(sheet(), Qt::Key_Escape);
  outcome_.reset();
  ASSERT_TRUE(authentication_.canEvaluate());
  begin();
  ASSERT_NE(sheet(), nullptr);
  answer("secret");
  authentication_.look();
  EXPECT_EQ(outcome_, true);
}

TEST_F(AuthenticationPromptTest, AsksOverTheWindowThatIsInFront) {
  QDialog front(&window_);
  front.open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&front));
  begin();
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(sheet()->parentWidget(), &front);
}

TEST_F(AuthenticationPromptTest, AWindowThatGoesTakesTheQuestionAlong) {
  auto front = std::make_unique<QDialog>(&window_);
  front->open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(front.get()));
  begin();
  front.reset();
  EXPECT_EQ(outcome_, false);
}

TEST_F(AuthenticationPromptTest, WithoutThePromptNobodyIsAsked) {
  begin();
  prompt_.reset();
  EXPECT_EQ(outcome_, false);
  EXPECT_FALSE(authentication_.canEvaluate());
}

TEST_F(AuthenticationPromptTest, Pictures) {
  begin();
  answer("guess");
  authentication_.look();
  QTest::keyClicks(field(), QStringLiteral("secre"));
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet()));
  keepPictures(*sheet(), QStringLiteral("sheet-authentication"));
}

}  // namespace

}  // namespace Nimbrel
