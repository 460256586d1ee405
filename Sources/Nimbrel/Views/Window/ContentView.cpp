#include "Views/Window/ContentView.h"

#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Window/DetailsColumn.h"
#include "Views/Window/HeaderLine.h"
#include "Views/Window/MainMenu.h"
#include "Views/Window/NoRecordingSheet.h"
#include "Views/Window/Sidebar.h"
#include "Views/Window/Surface.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QClipboard>
#include <QCloseEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QVBoxLayout>

#include <cmath>
#include <functional>
#include <utility>

namespace Nimbrel {

namespace {

constexpr QSize firstSize(1120, 720);

/// For screen readers any other widget of its own on the desktop is no more than a space.
QAccessibleInterface* windowInterface(const QString& /*className*/, QObject* object) {
  auto* window = qobject_cast<ContentView*>(object);
  return window != nullptr ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

}  // namespace

ContentView::ContentView(Store& store, AppIcons& icons, WindowParts parts)
    : store_(store),
      parts_(std::move(parts)),
      editor_(new EditorTarget(store, this)),
      imports_(new FileImports(store, this)),
      sheets_(new SheetHost(*this)) {
  // Installed once, however often that is asked for.
  QAccessible::installFactory(windowInterface);
  setObjectName(QStringLiteral("mainWindow"));
  setWindowTitle(QStringLiteral("Nimbrel"));
  setMinimumSize(Measures::windowMinimumWidth, Measures::windowMinimumHeight);
  resize(firstSize);
  setAcceptDrops(true);
  auto* menu = new MainMenu(store, parts_, *this);
  menu->setPasteElsewhere([this] {
    const auto* mime = QGuiApplication::clipboard()->mimeData();
    if (mime != nullptr && mime->hasImage()) imports_->take(*mime);
  });
  toolbar_ = new Toolbar(store, menu->menus(), this);
  auto* content = makeContent();
  columns_ = new Columns(new Sidebar(store, icons), content, new DetailsColumn(store, parts_, *editor_), this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(toolbar_);
  column->addWidget(columns_, 1);
  toolbar_->setSidebarWidth(columns_->sidebarWidth());

  connect(toolbar_, &Toolbar::sidebarToggled, this, [this] { setSidebarShown(!showsSidebar_); });
  connect(toolbar_, &Toolbar::detailsToggled, this, [this] { setDetailsShown(!showsDetails_); });
  connect(columns_, &Columns::sidebarWidthChanged, this, [this](int width) { toolbar_->setSidebarWidth(width); });
  connect(columns_, &Columns::detailsWidthChanged, this,
          [this](int width) { store_.settings().inspectorWidth.set(width); });
  connect(&store.settings(), &Settings::changed, this, &ContentView::followSettings);
  followSettings();
  addSheets();
}

QWidget* ContentView::makeContent() {
  auto* content = new QWidget(this);
  content->setObjectName(QStringLiteral("content"));
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new HeaderLine(store_, content));
  column->addWidget(new Hairline(Qt::Horizontal, 0, content));
  auto* gallery = parts_.gallery ? parts_.gallery(content, *editor_) : new QWidget(content);
  if (!parts_.gallery) setSurface(*gallery, Token::Base);
  column->addWidget(gallery, 1);
  return content;
}

void ContentView::addSheets() {
  const auto add = [this](auto isShown, auto setShown, auto changed, const WindowParts::Sheet& make) {
    sheets_->add({.isWanted = std::bind_front(isShown, &store_),
                  .dismissed = std::bind_front(setShown, &store_, false),
                  .make = make});
    connect(&store_, changed, sheets_, &SheetHost::look);
  };
  add(&Store::showPurge, &Store::setShowPurge, &Store::showPurgeChanged, parts_.purge);
  add(&Store::showDuplicates, &Store::setShowDuplicates, &Store::showDuplicatesChanged, parts_.duplicates);
  add(&Store::showShrink, &Store::setShowShrink, &Store::showShrinkChanged, parts_.shrink);
  add(&Store::showCleanup, &Store::setShowCleanup, &Store::showCleanupChanged, parts_.cleanup);
  add(&Store::showRecordingTools, &Store::setShowRecordingTools, &Store::showRecordingToolsChanged,
      [this](QWidget* window) -> QDialog* {
        if (!store_.lastRecordingURL()) return new NoRecordingSheet(window);
        return parts_.recordingTools ? parts_.recordingTools(window) : nullptr;
      });
  sheets_->add({.isWanted = [this] { return editor_->shot().has_value(); },
                .dismissed = [this] { editor_->setShot(std::nullopt); },
                .make = [this](QWidget* window) -> QDialog* {
                  return parts_.editor ? parts_.editor(window, *editor_) : nullptr;
                }});
  connect(editor_, &EditorTarget::changed, sheets_, &SheetHost::look);
  sheets_->look();
}

void ContentView::followSettings() {
  columns_->setDetailsWidth(static_cast<int>(std::lround(store_.settings().inspectorWidth())));
}

void ContentView::setSidebarShown(bool shown) {
  showsSidebar_ = shown;
  columns_->setSidebarShown(shown);
  toolbar_->setSidebarWidth(shown ? std::optional(columns_->sidebarWidth()) : std::nullopt);
}

void ContentView::setDetailsShown(bool shown) {
  showsDetails_ = shown;
  columns_->setDetailsShown(shown);
  toolbar_->setDetailsShown(shown);
}

void ContentView::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  if (event->isAccepted()) Q_EMIT closed();
}

void ContentView::dragEnterEvent(QDragEnterEvent* event) { dragMoveEvent(event); }

void ContentView::dragMoveEvent(QDragMoveEvent* event) {
  // What comes from our own windows is in the catalogue already.
  if (event->source() != nullptr || !FileImports::canTake(*event->mimeData())) return event->ignore();
  // What is dropped stays where it lies.
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void ContentView::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  imports_->take(*event->mimeData());
}

}  // namespace Nimbrel
