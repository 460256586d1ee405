#include "Linux/Authentication/Conversation.h"

#include "Foundation/Wipe.h"

#include <utility>

namespace Nimbrel {

Conversation::Conversation(CredentialPrompt& prompt, QObject& receiver, Finished finished)
    : prompt_(prompt), finished_(std::move(finished)), receiver_(&receiver) {}

std::optional<std::string> Conversation::ask(const std::string& question, CredentialPrompt::Echo echo) {
  std::unique_lock lock(mutex_);
  if (isOver()) return std::nullopt;
  inMainThread([this, question, echo, number = ++questions_] { put(question, echo, number); });
  changed_.wait(lock, [this] { return isOver() || answer_; });
  return std::exchange(answer_, std::nullopt);
}

void Conversation::show(const std::string& message) {
  const std::scoped_lock lock(mutex_);
  inMainThread([this, message] { prompt_.show(message); });
}

void Conversation::pause(std::chrono::microseconds time) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, time, [this] { return isOver(); });
}

void Conversation::finish(bool granted) {
  const std::scoped_lock lock(mutex_);
  inMainThread([this, granted] { finished_(granted); });
}

bool Conversation::wasAnswered() {
  const std::scoped_lock lock(mutex_);
  return questions_ > 0 && !isCancelled_;
}

void Conversation::end() {
  const std::scoped_lock lock(mutex_);
  receiver_ = nullptr;
  if (answer_) wipe(*answer_);
  answer_.reset();
  changed_.notify_all();
}

bool Conversation::hasEnded() {
  const std::scoped_lock lock(mutex_);
  return receiver_ == nullptr;
}

void Conversation::inMainThread(std::function<void()> work) {
  if (receiver_ == nullptr) return;
  auto unlessEnded = [self = shared_from_this(), work = std::move(work)] {
    // Only the main thread ends a conversation, so this holds until the work is done.
    if (!self->hasEnded()) work();
  };
  QMetaObject::invokeMethod(receiver_, std::move(unlessEnded), Qt::QueuedConnection);
}

void Conversation::put(const std::string& question, CredentialPrompt::Echo echo, unsigned number) {
  prompt_.ask(question, echo, [weakly = weak_from_this(), number](std::optional<std::string> text) {
    if (const auto self = weakly.lock()) return self->answer(number, std::move(text));
    if (text) wipe(*text);
  });
}

void Conversation::answer(unsigned number, std::optional<std::string> text) {
  const std::scoped_lock lock(mutex_);
  if (isOver() || answer_ || number != questions_) {
    if (text) wipe(*text);
    return;
  }
  if (!text) isCancelled_ = true;
  answer_ = std::move(text);
  changed_.notify_all();
}

}  // namespace Nimbrel
