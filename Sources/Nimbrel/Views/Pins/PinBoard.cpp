#include "Views/Pins/PinBoard.h"

#include "Foundation/Background.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Shared/ShotWords.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

constexpr int threadCount = 2;
constexpr double roundingPixels = 1.5;

int longerSide(const QImage& image) { return std::max(image.width(), image.height()); }

/// More is never seen at once on any screen.
int mostPixels() {
  int most = ThumbLoader::previewSide;
  for (const auto* screen : QGuiApplication::screens()) {
    const auto size = screen->size() * screen->devicePixelRatio();
    most = std::max({most, size.width(), size.height()});
  }
  return most;
}

/// Whether a picture can be a preview of the file, whose stored size knows nothing of its orientation.
bool canShow(const QImage& preview, const ImageFile::PixelSize& stored) {
  const double longer = std::max(stored.width, stored.height);
  const double shorter = std::min(stored.width, stored.height);
  if (preview.isNull() || !(shorter > 0)) return false;
  const auto scale = std::min(1.0, ThumbLoader::previewSide / longer);
  const auto isNear = [](int side, double expected) { return std::abs(side - expected) < roundingPixels; };
  return isNear(longerSide(preview), longer * scale) &&
         isNear(std::min(preview.width(), preview.height()), std::max(1.0, shorter * scale));
}

/// Where the user works; null without any screen.
QScreen* screenOfUser() {
  if (const auto* window = QApplication::activeWindow()) return window->screen();
  auto* pointedAt = QGuiApplication::screenAt(QCursor::pos());
  return pointedAt != nullptr ? pointedAt : QGuiApplication::primaryScreen();
}

/// The row of a pinned shot as it is now, or the shot as it was where that is gone.
ShotPtr currentRow(const Store& store, const ShotPtr& shot) {
  const auto found = std::ranges::find_if(store.shots(), [&](const ShotPtr& row) { return isSameRow(*row, *shot); });
  return found == store.shots().end() ? shot : *found;
}

}  // namespace

PinBoard::PinBoard(Store& store, GalleryPreviewCache& previews, WindowStacking& stacking, Decoder decoder)
    : store_(store), previews_(previews), stacking_(stacking), decoder_(std::move(decoder)) {
  threads_.setMaxThreadCount(threadCount);
  connect(&store_, &Store::sensitiveLocked, this, &PinBoard::closeSensitive);
  connect(&store_, &Store::shotsChanged, this, &PinBoard::closeProtected);
  connect(&store_, &Store::unlockedSensitiveIDsChanged, this, &PinBoard::closeProtected);
}

PinBoard::~PinBoard() { stop_.request_stop(); }

void PinBoard::pin(const ShotPtr& asked) {
  // While access was asked for it may have been renamed, or turned out to be sensitive itself.
  const auto shot = currentRow(store_, asked);
  if (store_.isProtected(*shot)) return;
  if (const auto former = pins_.find(shot->id); former != pins_.end()) {
    if (isSameRow(*former->second.shot, *shot)) {
      if (former->second.view) former->second.view->raise();
      return;
    }
    unpin(shot->id);
  }
  auto& pin = pins_[shot->id];
  pin.shot = shot;
  pin.screen = screenOfUser();
  // What is kept goes by the path: of a file that has gone it is not shown, nor for long where another one lies there.
  const auto preview = previews_.image(shot->path);
  if (canShow(preview, ShotFile::dimensions(shot->path))) show(pin, preview);
  decode(shot);
}

void PinBoard::decode(const ShotPtr& shot) {
  inBackground(
      this, threads_,
      [decoder = decoder_, path = shot->path, most = mostPixels(), stop = stop_.get_token()] {
        return stop.stop_requested() ? QImage() : decoder(path, most);
      },
      [this, shot](const QImage& picture) { take(shot, picture); });
}

void PinBoard::take(const ShotPtr& shot, const QImage& picture) {
  // It may have been closed meanwhile, and pinned again.
  const auto found = pins_.find(shot->id);
  if (found == pins_.end() || found->second.shot != shot) return;
  auto& pin = found->second;
  if (picture.isNull()) {
    if (!pin.view && pin.waiting.isNull()) pins_.erase(found);
    return;
  }
  pin.view ? pin.view->setPicture(picture) : show(pin, picture);
}

void PinBoard::show(Pin& pin, const QImage& picture) {
  if (isHeldBack_) {
    pin.waiting = picture;
    return;
  }
  const auto id = pin.shot->id;
  auto* screen = pin.screen ? pin.screen.data() : screenOfUser();
  if (screen == nullptr) return unpin(id);
  const auto others = static_cast<int>(count());
  pin.view = std::make_unique<PinnedView>(picture, stacking_);
  const auto name = shownText(pin.shot->name);
  pin.view->setWindowTitle(name);
  pin.view->setAccessibleName(name);
  connect(pin.view.get(), &PinnedView::closeRequested, this, [this, id] { unpin(id); });
  connect(pin.view.get(), &PinnedView::openRequested, this, [this, shot = pin.shot] { openFile(shot); });
  pin.view->open(*screen, others);
  sayWhatCannotBe();
}

void PinBoard::sayWhatCannotBe() {
  if (stacking_.canPlace() || std::exchange(hasSaidWhatCannotBe_, true)) return;
  store_.setStatus("This desktop does not keep pins above other windows");
}

void PinBoard::openFile(const ShotPtr& shot) {
  // It may lie elsewhere by now.
  const auto row = currentRow(store_, shot);
  store_.withAccess({row}, [&store = store_, row] { store.open(*row); });
}

void PinBoard::close(Pin pin) {
  if (!pin.view) return;
  pin.view->disconnect(this);
  pin.view->hide();
  // What led here may be one of its buttons.
  pin.view.release()->deleteLater();
}

void PinBoard::unpin(ShotID id) {
  const auto found = pins_.find(id);
  if (found == pins_.end()) return;
  auto pin = std::move(found->second);
  pins_.erase(found);
  close(std::move(pin));
}

void PinBoard::unpinAll() {
  std::exchange(stop_, {}).request_stop();
  for (auto& [id, pin] : std::exchange(pins_, {})) close(std::move(pin));
}

void PinBoard::setHeldBack(bool isHeldBack) {
  isHeldBack_ = isHeldBack;
  if (isHeldBack) return;
  std::vector<ShotID> waiting;
  for (const auto& [id, pin] : pins_) {
    if (!pin.waiting.isNull()) waiting.push_back(id);
  }
  for (const auto id : waiting) {
    // Without any screen the pins go.
    const auto found = pins_.find(id);
    if (found != pins_.end()) show(found->second, std::exchange(found->second.waiting, {}));
  }
}

std::size_t PinBoard::count() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(pins_, [](const auto& entry) { return entry.second.view != nullptr; }));
}

PinnedView* PinBoard::window(ShotID id) const {
  const auto found = pins_.find(id);
  return found == pins_.end() ? nullptr : found->second.view.get();
}

void PinBoard::closeThose(const Condition& isToClose) {
  if (pins_.empty()) return;
  std::map<ShotID, ShotPtr> pinned;
  for (const auto& [id, pin] : pins_) pinned.emplace(id, pin.shot);
  for (const auto& row : store_.shots()) {
    const auto found = pinned.find(row->id);
    if (found != pinned.end() && isSameRow(*row, *found->second)) found->second = row;
  }
  for (const auto& [id, shot] : pinned) {
    if (isToClose(*shot)) unpin(id);
  }
}

void PinBoard::closeSensitive() {
  closeThose([](const Shot& shot) { return !shot.sensitive.empty(); });
}

void PinBoard::closeProtected() {
  closeThose([this](const Shot& shot) { return store_.isProtected(shot); });
}

}  // namespace Nimbrel
