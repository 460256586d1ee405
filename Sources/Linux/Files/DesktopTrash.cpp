#include "Linux/Files/DesktopTrash.h"

#include "Foundation/Background.h"
#include "Linux/Files/Trashing.h"

#include <atomic>

namespace Nimbrel {

namespace {

class DesktopTrash final : public Trash {
 public:
  explicit DesktopTrash(std::optional<std::string> homeTrash) : homeTrash_(std::move(homeTrash)) {
    // In their order, also where one request comes while another is at work.
    pool_.setMaxThreadCount(1);
  }
  ~DesktopTrash() override {
    isEnding_ = true;
    pool_.waitForDone();
  }

  void recycle(QObject* context, std::vector<std::string> paths, Then then) override {
    inBackground(
        context, pool_, [this, paths = std::move(paths)] { return moveAll(paths); }, std::move(then));
  }

 private:
  [[nodiscard]] std::optional<Error> moveAll(const std::vector<std::string>& paths) const {
    for (const auto& path : paths) {
      if (isEnding_) return Error{"Nimbrel was quit"};
      if (auto failure = moveToTrash(path, homeTrash_)) return failure;
    }
    return std::nullopt;
  }

  std::optional<std::string> homeTrash_;
  std::atomic<bool> isEnding_ = false;
  QThreadPool pool_;
};

}  // namespace

std::unique_ptr<Trash> makeDesktopTrash(std::optional<std::string> homeTrash) {
  return std::make_unique<DesktopTrash>(std::move(homeTrash));
}

}  // namespace Nimbrel
