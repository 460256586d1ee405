#include "Views/Gallery/GalleryEmpty.h"

#include "Views/Shared/Measures.h"

#include <QFile>
#include <QFileDialog>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int folderWidth = 420;

QString titleFor(const std::string& query) {
  return query.empty() ? QStringLiteral("No Shots") : QStringLiteral("No Matches");
}

QString descriptionFor(const std::string& query) {
  if (query.empty()) return QStringLiteral("Screenshots you take will show up here.");
  return QStringLiteral("Nothing matches “") + oneLine(QString::fromStdString(query)) + QStringLiteral("”.");
}

void watchFolder(Store& store, const std::string& path) {
  const auto watched = store.settings().sourceFolders();
  if (std::ranges::find(watched, path) != watched.end()) return;
  auto sources = store.settings().sources();
  sources.push_back(path);
  // A worker in another process sees the change of the settings by itself.
  store.settings().sources.set(std::move(sources));
  if (!store.isBackgroundWorker()) return;
  store.restartWatching();
  store.scheduleRescan();
}

}  // namespace

GalleryEmpty::GalleryEmpty(Store& store, QWidget* parent)
    : QWidget(parent),
      store_(store),
      placeholder_(new Placeholder(QStringLiteral("photo.on.rectangle"), {}, {}, Placeholder::Size::Normal, this)),
      firstRun_(new QWidget(this)),
      folders_(new QVBoxLayout) {
  setObjectName(QStringLiteral("gallery.empty"));
  placeholder_->setObjectName(QStringLiteral("gallery.empty.placeholder"));
  firstRun_->setObjectName(QStringLiteral("gallery.firstRun"));
  auto* button = new QPushButton(tr("Add Folder…"));
  button->setObjectName(QStringLiteral("gallery.addFolder"));
  connect(button, &QPushButton::clicked, this, &GalleryEmpty::chooseFolder);

  folders_->setSpacing(Measures::step4);
  auto* rows = new QVBoxLayout(firstRun_);
  rows->setContentsMargins(Measures::step20, 0, Measures::step20, Measures::step20);
  rows->setSpacing(Measures::step16);
  rows->addLayout(folders_);
  rows->addWidget(button, 0, Qt::AlignHCenter);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addStretch(1);
  column->addWidget(placeholder_);
  column->addWidget(firstRun_, 0, Qt::AlignHCenter);
  column->addStretch(1);
  connect(&store_.settings(), &Settings::changed, this, [this](const QString& key) {
    if (key == store_.settings().sources.key()) refresh();
  });
  connect(&store_, &Store::queryChanged, this, &GalleryEmpty::refresh);
  refresh();
}

void GalleryEmpty::refresh() {
  placeholder_->setContent(QStringLiteral("photo.on.rectangle"), titleFor(store_.query()),
                           descriptionFor(store_.query()));
  firstRun_->setVisible(store_.query().empty() && store_.shots().empty());
  showFolders();
}

void GalleryEmpty::showFolders() {
  while (auto* item = folders_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  const auto add = [this](TextStyle style, Qt::TextElideMode mode, const QString& text) {
    auto* label = new ElidedLabel(style, Token::Secondary, mode);
    label->setFullText(text);
    label->setAlignment(Qt::AlignCenter);
    label->setMaximumWidth(scaled(folderWidth));
    folders_->addWidget(label, 0, Qt::AlignHCenter);
  };
  const auto folders = store_.settings().sourceFolders();
  if (folders.empty()) return add(TextStyle::Callout, Qt::ElideRight, tr("No folder is watched."));
  add(TextStyle::Callout, Qt::ElideRight, folders.size() == 1 ? tr("Watched folder:") : tr("Watched folders:"));
  for (const auto& folder : folders) add(TextStyle::Callout, Qt::ElideMiddle, QString::fromStdString(folder));
}

void GalleryEmpty::chooseFolder() {
  // Of the window: the first shot may come, and this view go, while the user still chooses.
  auto* dialog = new QFileDialog(window(), tr("Add Folder"));
  dialog->setObjectName(QStringLiteral("addFolderDialog"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  connect(dialog, &QFileDialog::fileSelected, dialog,
          [&store = store_](const QString& path) { watchFolder(store, QFile::encodeName(path).toStdString()); });
  dialog->open();
}

void GalleryEmpty::addFolder(const std::string& path) { watchFolder(store_, path); }

}  // namespace Nimbrel
