#include "Linux/Factory.h"
#include "Linux/Instance/BusInstance.h"
#include "Linux/Instance/SocketInstance.h"

#include <QCryptographicHash>

#include <filesystem>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

constexpr qsizetype hashLetters = 16;

/// That of the session, which ends with it, or else the catalogue's own.
std::string folderOfSockets(const std::string& catalogueFolder) {
  const auto folder = qgetenv("XDG_RUNTIME_DIR").toStdString();
  std::error_code error;
  return folder.starts_with('/') && std::filesystem::is_directory(folder, error) ? folder : catalogueFolder;
}

/// Another one for each catalogue.
std::string socketName(const std::string& identifier, const std::string& catalogueFolder) {
  const auto hash = QCryptographicHash::hash(QByteArray::fromStdString(catalogueFolder), QCryptographicHash::Sha256);
  return identifier + "-" + hash.toHex().left(hashLetters).toStdString();
}

class DesktopInstance final : public SingleInstance {
 public:
  DesktopInstance(const std::string& identifier, const std::string& catalogueFolder)
      : bus_(identifier, catalogueFolder, [this](const StartRequest& request) { take(request); }),
        socket_(folderOfSockets(catalogueFolder), socketName(identifier, catalogueFolder),
                [this](const StartRequest& request) { take(request); }) {}

  [[nodiscard]] Place claim(const StartRequest& request) override {
    const auto onBus = bus_.claim(request);
    return onBus ? *onBus : socket_.claim(request);
  }

  void listen(Handler handler) override {
    handler_ = std::move(handler);
    for (const auto& request : std::exchange(waiting_, {})) {
      QMetaObject::invokeMethod(
          &socket_, [this, request] { handler_(request); }, Qt::QueuedConnection);
    }
  }

 private:
  void take(const StartRequest& request) { handler_ ? handler_(request) : waiting_.push_back(request); }

  Handler handler_;
  std::vector<StartRequest> waiting_;
  BusInstance bus_;
  SocketInstance socket_;
};

}  // namespace

std::unique_ptr<SingleInstance> makeSingleInstance(const std::string& identifier, const std::string& catalogueFolder) {
  return std::make_unique<DesktopInstance>(identifier, catalogueFolder);
}

}  // namespace Nimbrel
