#include "Linux/Authentication/PamTransaction.h"

#include "Foundation/Wipe.h"

#include <security/pam_appl.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

namespace Nimbrel {

namespace {

/// The answers as PAM takes them over: it frees list and texts with free().
class Replies {
 public:
  explicit Replies(int count)
      : count_(count),
        list_(static_cast<pam_response*>(std::calloc(static_cast<std::size_t>(count), sizeof(pam_response)))) {}
  ~Replies() {
    for (int i = 0; list_ != nullptr && i < count_; ++i) {
      if (list_[i].resp == nullptr) continue;
      ::explicit_bzero(list_[i].resp, std::strlen(list_[i].resp));
      std::free(list_[i].resp);
    }
    std::free(list_);
  }
  Replies(const Replies&) = delete;
  Replies& operator=(const Replies&) = delete;

  [[nodiscard]] bool areThere() const { return list_ != nullptr; }
  [[nodiscard]] bool set(int index, std::string_view text) {
    list_[index].resp = ::strndup(text.data(), text.size());
    return list_[index].resp != nullptr;
  }
  [[nodiscard]] pam_response* release() { return std::exchange(list_, nullptr); }

 private:
  int count_;
  pam_response* list_;
};

/// Modules take a reply to be a C text within bounds; a longer one or one with a zero in it would be cut in silence.
bool isReply(std::string_view text) {
  return text.size() < PAM_MAX_RESP_SIZE && text.find('\0') == std::string_view::npos;
}

bool askInto(Replies& replies, int index, Conversation& conversation, const pam_message& message) {
  const auto echo = message.msg_style == PAM_PROMPT_ECHO_OFF ? CredentialPrompt::Echo::Off : CredentialPrompt::Echo::On;
  auto answer = conversation.ask(message.msg, echo);
  if (!answer) return false;
  const bool isSet = isReply(*answer) && replies.set(index, *answer);
  wipe(*answer);
  return isSet;
}

bool reply(Replies& replies, int index, Conversation& conversation, const pam_message& message) {
  switch (message.msg_style) {
    case PAM_PROMPT_ECHO_OFF:
    case PAM_PROMPT_ECHO_ON:
    case PAM_RADIO_TYPE:
      return askInto(replies, index, conversation, message);
    case PAM_ERROR_MSG:
    case PAM_TEXT_INFO:
      conversation.show(message.msg);
      return true;
    default:
      // Bytes for a program of a module's own; no person can answer them.
      return false;
  }
}

extern "C" int converse(int count, const pam_message** messages, pam_response** list, void* conversation) {
  if (count <= 0 || count > PAM_MAX_NUM_MSG) return PAM_CONV_ERR;
  Replies replies(count);
  if (!replies.areThere()) return PAM_BUF_ERR;
  for (int i = 0; i < count; ++i) {
    if (!reply(replies, i, *static_cast<Conversation*>(conversation), *messages[i])) return PAM_CONV_ERR;
  }
  *list = replies.release();
  return PAM_SUCCESS;
}

/// The pause after a wrong password, in place of PAM's own, which nothing could end.
extern "C" void pauseAfterFailure(int status, unsigned microseconds, void* conversation) {
  if (status == PAM_SUCCESS) return;
  static_cast<Conversation*>(conversation)->pause(std::chrono::microseconds(microseconds));
}

class Transaction {
 public:
  Transaction(const std::string& service, const std::string& user, Conversation& conversation)
      : talk_{converse, &conversation}, status_(::pam_start(service.c_str(), user.c_str(), &talk_, &handle_)) {
    attempt([](pam_handle_t* handle) {
      return ::pam_set_item(handle, PAM_FAIL_DELAY, reinterpret_cast<const void*>(&pauseAfterFailure));
    });
  }
  ~Transaction() {
    if (handle_ != nullptr) ::pam_end(handle_, status_);
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Takes a step if all before it went well; returns whether this one did too.
  bool attempt(int (*step)(pam_handle_t*)) {
    if (status_ == PAM_SUCCESS) status_ = step(handle_);
    return status_ == PAM_SUCCESS;
  }

 private:
  pam_conv talk_;
  pam_handle_t* handle_ = nullptr;
  int status_;
};

}  // namespace

bool authenticate(const std::string& service, const std::string& user, Conversation& conversation) {
  Transaction transaction(service, user, conversation);
  transaction.attempt([](pam_handle_t* handle) { return ::pam_authenticate(handle, 0); });
  return transaction.attempt([](pam_handle_t* handle) { return ::pam_acct_mgmt(handle, 0); });
}

}  // namespace Nimbrel
