#include "Views/Window/Sidebar.h"

#include "Views/Shared/Measures.h"
#include "Views/Window/SidebarDelegate.h"
#include "Views/Window/Surface.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace Nimbrel {

namespace {

constexpr int topInset = Measures::step2;

}  // namespace

Sidebar::Sidebar(Store& store, AppIcons& icons, QWidget* parent)
    : QListView(parent), store_(store), model_(new SidebarModel(icons, this)) {
  setObjectName(QStringLiteral("sidebar"));
  setAccessibleName(QStringLiteral("Sidebar"));
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setUniformItemSizes(true);
  setMouseTracking(true);
  setViewportMargins(Measures::step8, topInset, Measures::step8, 0);
  setSurface(*this, Token::Sidebar);
  setItemDelegate(new SidebarDelegate(this));
  setModel(model_);

  refreshing_.setSingleShot(true);
  connect(&refreshing_, &QTimer::timeout, this, &Sidebar::refresh);
  const auto refreshLater = [this] { refreshing_.start(); };
  connect(&store, &Store::shotsChanged, this, refreshLater);
  connect(&store, &Store::derivedChanged, this, refreshLater);
  connect(&store, &Store::tagsChanged, this, refreshLater);
  connect(&store.settings(), &Settings::changed, this, [this, refreshLater](const QString& key) {
    const auto& settings = store_.settings();
    if (key == settings.savedSearches.key() || key == settings.projects.key()) refreshLater();
  });
  connect(&store, &Store::filterChanged, this, &Sidebar::showChoice);
  refresh();
}

void Sidebar::refresh() {
  const auto offset = verticalScrollBar()->value();
  {
    const QScopedValueRollback showing(isShowing_, true);
    model_->setSections(sidebarSections(store_));
  }
  showChoice();
  verticalScrollBar()->setValue(offset);
}

void Sidebar::showChoice() {
  const QScopedValueRollback showing(isShowing_, true);
  const auto index = model_->indexOf(store_.filter());
  if (!index.isValid()) return clearSelection();
  if (selectionModel()->isSelected(index) && currentIndex() == index) return;
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

void Sidebar::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListView::selectionChanged(selected, deselected);
  if (isShowing_) return;
  const auto indexes = selectedIndexes();
  if (indexes.isEmpty()) {
    // Nothing cannot be chosen; what is chosen comes back once the view is done with this change.
    QMetaObject::invokeMethod(this, &Sidebar::showChoice, Qt::QueuedConnection);
    return;
  }
  // A copy: what it changes may make other rows.
  if (const auto* row = model_->rowAt(indexes.front())) chooseFilter(store_, Filter(row->filter));
}

void Sidebar::mousePressEvent(QMouseEvent* event) {
  // The other button asks for the menu of a row without choosing it.
  if (event->button() == Qt::LeftButton) QListView::mousePressEvent(event);
}

void Sidebar::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const auto index = isByKey ? currentIndex() : indexAt(event->pos());
  const auto* row = model_->rowAt(index);
  const auto* saved = row ? std::get_if<Filter::Saved>(&row->filter.choice) : nullptr;
  if (saved == nullptr) return event->ignore();
  const auto below = visualRect(index).bottomLeft();
  showMenu(saved->text, isByKey ? viewport()->mapToGlobal(below) : event->globalPos());
  event->accept();
}

void Sidebar::showMenu(const std::string& savedSearch, const QPoint& place) {
  auto* menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("sidebar.menu"));
  auto* remove = menu->addAction(QStringLiteral("Remove"));
  remove->setObjectName(QStringLiteral("sidebar.remove"));
  connect(remove, &QAction::triggered, this, [this, savedSearch] { store_.removeSaved(savedSearch); });
  connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
  menu->popup(place);
}

}  // namespace Nimbrel
