#include "AuthenticationHelper.h"

#include "Linux/Authentication/PamOwnerAuthentication.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <utility>

namespace {

using namespace std::chrono_literals;
using Nimbrel::CredentialPrompt;

void say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

/// Answers from a list; a question beyond its end stays open.
class ListedAnswers final : public CredentialPrompt {
 public:
  explicit ListedAnswers(std::vector<std::string> answers) : answers_(std::move(answers)) {}

  void ask(const std::string& question, Echo echo, Answer answer) override {
    say(question + (echo == Echo::On ? " (shown)" : " (hidden)"));
    if (next_ < answers_.size()) {
      const auto& text = answers_[next_++];
      answer(text == "-" ? std::nullopt : std::optional(text));
    }
    open = std::move(answer);
    if (onQuestion) onQuestion();
  }
  void show(const std::string& message) override { say(message); }
  bool wantsAnotherTry() override {
    if (tries > 0) say("once more");
    return tries-- > 0;
  }
  void end() override { say("end"); }

  int tries = 0;  ///< after the first

  Answer open;  ///< that of the last question
  std::function<void()> onQuestion;

 private:
  std::vector<std::string> answers_;
  std::size_t next_ = 0;
};

class Run {
 public:
  explicit Run(std::vector<std::string> answers) : prompt_(std::move(answers)) { owner_->setPrompt(&prompt_); }

  int once() {
    ask([] { QCoreApplication::quit(); });
    return QCoreApplication::exec();
  }
  int trying(int tries) {
    prompt_.tries = tries;
    return once();
  }
  int twice() {
    ask([this] { ask([] { QCoreApplication::quit(); }); });
    return QCoreApplication::exec();
  }
  int withoutPrompt() {
    owner_->setPrompt(nullptr);
    if (!owner_->canEvaluate()) say("cannot evaluate");
    return once();
  }
  int atOnce() {
    ask([] { QCoreApplication::quit(); });
    ask([] {});
    return QCoreApplication::exec();
  }
  int takeBack() {
    prompt_.onQuestion = [this] {
      QTimer::singleShot(0, &context_, [this] {
        owner_->setPrompt(nullptr);
        prompt_.open("secret");
      });
    };
    return once();
  }
  /// When the question is there, or what was answered has had time to reach the pause after a wrong password.
  int destroyAfter(std::chrono::milliseconds time) {
    prompt_.onQuestion = [this, time] {
      QTimer::singleShot(time, &context_, [this] {
        owner_.reset();
        say("destroyed");
        prompt_.open("secret");
        QTimer::singleShot(100ms, &context_, [] { QCoreApplication::quit(); });
      });
    };
    return once();
  }
  int withoutContext() {
    auto context = std::make_unique<QObject>();
    owner_->evaluate(context.get(), "Reveal it", [](bool) { say("told"); });
    context.reset();
    QTimer::singleShot(500ms, &context_, [] { QCoreApplication::quit(); });
    return QCoreApplication::exec();
  }

 private:
  void ask(const std::function<void()>& then) {
    owner_->evaluate(&context_, "Reveal it", [then](bool granted) {
      say(granted ? "granted" : "refused");
      then();
    });
  }

  QObject context_;
  ListedAnswers prompt_;
  std::unique_ptr<Nimbrel::OwnerAuthentication> owner_ = Nimbrel::makePamOwnerAuthentication();
};

}  // namespace

int runAuthentication(std::string_view task, std::vector<std::string> answers) {
  if (task == "authenticate-with-zero") answers.front() += std::string("\0rest", 5);
  Run run(std::move(answers));
  if (task == "authenticate-twice") return run.twice();
  if (task == "authenticate-trying-again") return run.trying(2);
  if (task == "authenticate-without-prompt") return run.withoutPrompt();
  if (task == "authenticate-at-once") return run.atOnce();
  if (task == "authenticate-and-take-back") return run.takeBack();
  if (task == "authenticate-and-destroy") return run.destroyAfter(0ms);
  if (task == "authenticate-wrongly-and-destroy") return run.destroyAfter(500ms);
  if (task == "authenticate-without-context") return run.withoutContext();
  return run.once();
}
