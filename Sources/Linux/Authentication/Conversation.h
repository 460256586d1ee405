#pragma once

#include "Platform/OwnerAuthentication.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace Nimbrel {

/// Where a thread that authenticates meets the main thread, on which its questions are put. Both own it, and neither
/// waits for the other once it has ended: a thread that some module holds up ends whenever it may, unheard.
class Conversation : public std::enable_shared_from_this<Conversation> {
 public:
  using Finished = std::function<void(bool granted)>;

  /// `prompt` and `receiver`, an object of the main thread, must live until end(). `finished` is called in a turn of
  /// the main event loop, at most once, and never after end().
  Conversation(CredentialPrompt& prompt, QObject& receiver, Finished finished);

  // In the thread that authenticates

  /// Waits for the answer; absent when the question was cancelled, as all that follow it then are.
  [[nodiscard]] std::optional<std::string> ask(const std::string& question, CredentialPrompt::Echo echo);
  void show(const std::string& message);
  /// Waits, but not for a conversation that was cancelled or has ended.
  void pause(std::chrono::microseconds time);
  /// Nothing may follow.
  void finish(bool granted);

  // On the main thread

  /// Whether at least one question was put and none was cancelled.
  [[nodiscard]] bool wasAnswered();
  /// Nobody hears of it any more, and whoever waits goes on at once.
  void end();

 private:
  [[nodiscard]] bool hasEnded();
  /// On the main thread, unless it has ended before. The lock is held by the caller.
  void inMainThread(std::function<void()> work);
  void put(const std::string& question, CredentialPrompt::Echo echo, unsigned number);
  void answer(unsigned number, std::optional<std::string> text);
  [[nodiscard]] bool isOver() const { return receiver_ == nullptr || isCancelled_; }

  // Main thread only
  CredentialPrompt& prompt_;
  Finished finished_;

  std::mutex mutex_;
  std::condition_variable changed_;
  // Under the mutex
  QObject* receiver_;  ///< null once the conversation has ended
  bool isCancelled_ = false;
  unsigned questions_ = 0;  ///< how many were put
  std::optional<std::string> answer_;
};

}  // namespace Nimbrel
