#include "Linux/Authentication/PamOwnerAuthentication.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Linux/Authentication/Conversation.h"
#include "Linux/Authentication/PamTransaction.h"
#include "Linux/Desktop/Account.h"
#include "Platform/FileSystem.h"

#include <QPointer>

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::string_view ownService = "nimbrel";
constexpr std::string_view loginService = "login";

/// False when the system has no thread left.
bool startThread(std::string service, std::string user, std::shared_ptr<Conversation> conversation) {
  try {
    std::thread([service = std::move(service), user = std::move(user), conversation = std::move(conversation)] {
      conversation->finish(authenticate(service, user, *conversation));
    }).detach();
    return true;
  } catch (const std::system_error& error) {
    Log::write("Nimbrel: cannot authenticate: " + std::string(error.what()));
    return false;
  }
}

class PamOwnerAuthentication final : public OwnerAuthentication {
 public:
  ~PamOwnerAuthentication() override {
    if (conversation_) end();
  }

  void setPrompt(CredentialPrompt* prompt) override;
  [[nodiscard]] bool canEvaluate() const override { return prompt_ != nullptr && !user_.empty(); }
  void evaluate(QObject* context, const std::string& reason, Then then) override;

 private:
  static void refuseLater(QObject* context, Then then);
  void begin();
  void take(bool granted);
  void end();

  std::string user_ = Account::ofRealUser().value_or(Account{}).name;  ///< empty when the system knows none
  CredentialPrompt* prompt_ = nullptr;
  QObject receiver_;
  std::shared_ptr<Conversation> conversation_;  ///< the one that runs
  QPointer<QObject> context_;
  std::string reason_;
  Then then_;
};

void PamOwnerAuthentication::setPrompt(CredentialPrompt* prompt) {
  if (prompt == prompt_) return;
  if (conversation_) {
    end();
    if (context_) refuseLater(context_, std::exchange(then_, {}));
  }
  prompt_ = prompt;
}

void PamOwnerAuthentication::evaluate(QObject* context, const std::string& reason, Then then) {
  if (!canEvaluate() || conversation_) return refuseLater(context, std::move(then));
  context_ = context;
  reason_ = reason;
  then_ = std::move(then);
  begin();
}

void PamOwnerAuthentication::begin() {
  conversation_ = std::make_shared<Conversation>(*prompt_, receiver_, [this](bool granted) { take(granted); });
  conversation_->show(reason_);
  if (!startThread(pamService(pamFolders()), user_, conversation_)) {
    conversation_->finish(false);
  }
}

void PamOwnerAuthentication::take(bool granted) {
  // Without a question nothing would be another the next time.
  if (!granted && context_ && conversation_->wasAnswered() && prompt_->wantsAnotherTry()) {
    std::exchange(conversation_, nullptr)->end();
    return begin();
  }
  end();
  const auto finished = std::exchange(then_, {});
  if (context_) finished(granted);
}

void PamOwnerAuthentication::refuseLater(QObject* context, Then then) {
  QMetaObject::invokeMethod(
      context, [then = std::move(then)] { then(false); }, Qt::QueuedConnection);
}

void PamOwnerAuthentication::end() {
  std::exchange(conversation_, nullptr)->end();
  prompt_->end();
}

}  // namespace

std::unique_ptr<OwnerAuthentication> makePamOwnerAuthentication() { return std::make_unique<PamOwnerAuthentication>(); }

const std::vector<std::string>& pamFolders() {
  static const std::vector<std::string> folders{"/etc/pam.d", "/usr/lib/pam.d"};
  return folders;
}

std::string pamService(const std::vector<std::string>& folders) {
  const bool isInstalled = std::ranges::any_of(
      folders, [](const std::string& folder) { return FileSystem::exists(FilePath::join(folder, ownService)); });
  return std::string(isInstalled ? ownService : loginService);
}

}  // namespace Nimbrel
