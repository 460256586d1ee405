#include "Views/Gallery/GalleryFixture.h"

#include "Support/Pictures.h"
#include "Support/Waiting.h"

#include <QCoreApplication>
#include <QTest>

namespace Nimbrel::Testing {

GalleryFixture::GalleryFixture() : store_(home_.open(ProcessRole::tool, services())) {
  store_->setFilter({Filter::All{}});
  pictureOf_ = [](const std::string& path, int maxPixel) {
    return picture(maxPixel / 4, maxPixel / 6, static_cast<int>(path.size()));
  };
}

GalleryFixture::~GalleryFixture() { view_.reset(); }

Services GalleryFixture::services() {
  Services services;
  auto owner = std::make_unique<FakeOwnerAuthentication>();
  auto workspace = std::make_unique<FakeWorkspace>();
  auto trash = std::make_unique<FakeTrash>();
  owner_ = owner.get();
  workspace_ = workspace.get();
  trash_ = trash.get();
  services.ownerAuthentication = std::move(owner);
  services.workspace = std::move(workspace);
  services.trash = std::move(trash);
  return services;
}

ShotID GalleryFixture::add(const std::string& name, const std::function<void(Shot&)>& change) {
  Shot shot;
  shot.path = home_.path(name);
  shot.name = name;
  shot.date = home_.now - Seconds(60.0 * ++rows_);
  shot.added = shot.date;
  shot.bytes = 1000;
  if (change) change(shot);
  const auto id = store_->database().insert(shot);
  if (shot.ocrDone) store_->database().setOCR(id, shot.ocr, shot.sensitive);
  if (shot.favorite) store_->database().setFavorite(id, true);
  return id;
}

void GalleryFixture::add(int count) {
  const Database::QuickCommits quickly(store_->database());
  for (int number = 0; number < count; ++number) add("shot " + std::to_string(number) + ".png");
}

void GalleryFixture::show(QSize size) {
  store_->reload();
  const auto decoder = [this](const std::string& path, int maxPixel) {
    {
      const QMutexLocker lock(&mutex_);
      decoded_.push_back(path);
    }
    return pictureOf_(path, maxPixel);
  };
  view_ = std::make_unique<GalleryView>(
      GalleryView::Parts{.store = *store_, .icons = icons_, .thumbs = thumbs_, .previews = previews_}, nullptr,
      decoder);
  view_->resize(size);
  view_->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(view_.get()));
  QCoreApplication::processEvents();
}

void GalleryFixture::reload() {
  store_->reload();
  QCoreApplication::processEvents();
}

GridView& GalleryFixture::grid() const { return static_cast<GridView&>(part("gallery.grid")); }

QWidget& GalleryFixture::part(const char* objectName) const {
  auto* found = view_->findChild<QWidget*>(QString::fromLatin1(objectName));
  if (found != nullptr) return *found;
  ADD_FAILURE() << "there is no " << objectName;
  return *view_;
}

void GalleryFixture::click(std::size_t cell, Qt::KeyboardModifiers modifiers) {
  QTest::mouseClick(grid().viewport(), Qt::LeftButton, modifiers, grid().cellPlace(cell).center());
}

void GalleryFixture::key(int key, Qt::KeyboardModifiers modifiers) {
  auto* content = view_->findChild<QWidget*>(QStringLiteral("gallery.pager"));
  QTest::keyClick(content != nullptr ? content : &grid(), static_cast<Qt::Key>(key), modifiers);
}

std::vector<std::string> GalleryFixture::decoded() const {
  const QMutexLocker lock(&mutex_);
  return decoded_;
}

}  // namespace Nimbrel::Testing
