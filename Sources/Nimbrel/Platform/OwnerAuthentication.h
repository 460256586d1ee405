#pragma once

#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace Nimbrel {

/// Asks the person in front of the machine what an authentication wants to know. Supplied by whatever they are looking
/// at: a window, a terminal. Main thread.
class CredentialPrompt {
 public:
  enum class Echo { Off, On };
  /// What was typed; absent when the question was cancelled, which ends the authentication. Whoever answers wipes what
  /// is left of it (Foundation/Wipe.h).
  using Answer = std::function<void(std::optional<std::string> text)>;

  virtual ~CredentialPrompt() = default;

  /// Puts a question, in the words of the system, and calls `answer` once, at any later moment. An answer that comes
  /// after the end is dropped.
  virtual void ask(const std::string& question, Echo echo, Answer answer) = 0;
  /// Shows a message that wants no answer: "Place your finger on the reader".
  virtual void show(const std::string& message) = 0;
  /// The answers were not accepted. Whether the questions are to be put once more, from the beginning.
  [[nodiscard]] virtual bool wantsAnotherTry() { return false; }
  /// The questions are over, whatever came of them.
  virtual void end() = 0;
};

/// Finds out whether the person in front of the machine is its owner: the user whose process this is. Main thread; what
/// takes time happens elsewhere.
class OwnerAuthentication {
 public:
  using Then = std::function<void(bool granted)>;

  virtual ~OwnerAuthentication() = default;

  /// Who puts the questions from now on; nobody without one. Borrowed: it must outlive this object or be taken back. An
  /// authentication that runs meanwhile is refused.
  virtual void setPrompt(CredentialPrompt* prompt) = 0;

  /// Whether there is a way to ask at all.
  [[nodiscard]] virtual bool canEvaluate() const = 0;

  /// Asks, giving the reason, and calls `then` in a later turn of the event loop; never once `context` is gone. Refused
  /// for whatever reason, cancelling among them, is not granted. One authentication at a time: what is asked during
  /// another is refused.
  virtual void evaluate(QObject* context, const std::string& reason, Then then) = 0;
};

/// Where nobody can be asked.
class NullOwnerAuthentication final : public OwnerAuthentication {
 public:
  void setPrompt(CredentialPrompt*) override {}
  [[nodiscard]] bool canEvaluate() const override { return false; }
  void evaluate(QObject* context, const std::string&, Then then) override {
    QMetaObject::invokeMethod(
        context, [then = std::move(then)] { then(false); }, Qt::QueuedConnection);
  }
};

}  // namespace Nimbrel
