#include "Linux/Instance/BusInstance.h"

#include <QDBusConnectionInterface>

#include <utility>

namespace Nimbrel {

namespace {

/// It may be reading a large catalogue.
constexpr int longestAnswerMilliseconds = 10'000;
/// Whoever has the name may go just when it is asked.
constexpr int attempts = 3;

}  // namespace

BusInstance::BusInstance(std::string identifier, std::string catalogueFolder, SingleInstance::Handler onRequest)
    : identifier_(std::move(identifier)),
      catalogueFolder_(std::move(catalogueFolder)),
      object_(catalogueFolder_, std::move(onRequest)) {}

std::optional<SingleInstance::Place> BusInstance::claim(const StartRequest& request) {
  for (int attempt = 0; attempt < attempts && bus_.isOpen(); ++attempt) {
    if (takeName()) return SingleInstance::Place::First;
    const auto call = ApplicationObject::callFor(identifier_, catalogueFolder_, request);
    const auto answer = bus_.get().call(call, QDBus::Block, longestAnswerMilliseconds);
    if (answer.type() == QDBusMessage::ReplyMessage) return SingleInstance::Place::HandedOver;
    if (ApplicationObject::isOfOtherCatalogue(answer)) return std::nullopt;
    const auto owner = bus_.get().interface()->isServiceRegistered(QString::fromStdString(identifier_));
    if (owner.isValid() && owner.value()) return SingleInstance::Place::Unanswered;
  }
  return std::nullopt;
}

bool BusInstance::takeName() {
  auto connection = bus_.get();
  const auto path = ApplicationObject::pathOf(identifier_);
  // Before the name, by which it is found.
  if (!connection.registerVirtualObject(path, &object_)) return false;
  const auto reply = connection.interface()->registerService(QString::fromStdString(identifier_),
                                                             QDBusConnectionInterface::DontQueueService,
                                                             QDBusConnectionInterface::DontAllowReplacement);
  if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) return true;
  connection.unregisterObject(path);
  return false;
}

}  // namespace Nimbrel
