#include "Views/Pins/PinBoard.h"

#include "Foundation/Background.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Shared/ShotWords.h"

#include <QApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int threadCount = 2;

/// An id may come again after its row is gone.
bool isSameRow(const Shot& one, const Shot& other) { return one.id == other.id && one.added == other.added; }

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

/// Where the user works; null without any screen.
QScreen* screenOfUser() {
  const auto* window = QApplication::activeWindow();
  return window != nullptr ? window->screen() : QGuiApplication::primaryScreen();
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

PinBoard::~PinBoard() = default;

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
  const auto preview = previews_.image(shot->path);
  // A file that has gone meanwhile is not pinned, whatever is kept of it; its header tells that at once.
  const bool canBeShown = !preview.isNull() && ShotFile::dimensions(shot->path).width > 0;
  auto& pin = pins_[shot->id];
  pin.shot = shot;
  if (canBeShown) show(pin, preview);
  // A preview that is smaller than previews may be is the whole picture.
  if (!canBeShown || longerSide(preview) >= ThumbLoader::previewSide) decode(shot);
}

void PinBoard::decode(const ShotPtr& shot) {
  inBackground(
      this, threads_, [decoder = decoder_, path = shot->path, most = mostPixels()] { return decoder(path, most); },
      [this, shot](const QImage& picture) { take(shot, picture); });
}

void PinBoard::take(const ShotPtr& shot, const QImage& picture) {
  // It may have been closed meanwhile, and pinned again.
  const auto found = pins_.find(shot->id);
  if (found == pins_.end() || found->second.shot != shot) return;
  auto& pin = found->second;
  if (picture.isNull()) {
    if (!pin.view) pins_.erase(found);
    return;
  }
  pin.view ? pin.view->setPicture(picture) : show(pin, picture);
}

void PinBoard::show(Pin& pin, const QImage& picture) {
  const auto id = pin.shot->id;
  auto* screen = screenOfUser();
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
  for (auto& [id, pin] : std::exchange(pins_, {})) close(std::move(pin));
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
