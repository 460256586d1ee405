#include "App/ApplicationFixture.h"

#include "Linux/Desktop/QtPasteboard.h"
#include "Linux/Files/DesktopTrash.h"
#include "Support/Pictures.h"
#include "Support/Waiting.h"

#include <QApplication>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Nimbrel::Testing {

namespace {

constexpr QSize pictureSize(320, 200);
constexpr double secondsBetweenShots = 60;

}  // namespace

ApplicationFixture::ApplicationFixture() {
  services_.trash = makeDesktopTrash(home_.path(".local/share/Trash"));
  services_.pasteboard = makeQtPasteboard(nullptr);
}

ApplicationFixture::~ApplicationFixture() {
  process_.reset();
  store_.reset();
  // What was to be deleted in a later turn.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ApplicationFixture::addShot(const std::string& name, const std::string& text,
                                 const std::vector<std::string>& sensitive) {
  const auto path = home_.desktop(name);
  writePicture(path, pictureSize.width(), pictureSize.height(), ++shots_);
  setModificationTime(path, home_.now.time_since_epoch().count() - secondsBetweenShots * shots_);
  const auto tool = home_.open(ProcessRole::tool, Services());
  tool->importFiles({path});
  tool->database().setOCR(shotNamed(*tool, name)->id, text, sensitive);
}

void ApplicationFixture::openWindow() {
  const WindowServices windowServices(services_);
  store_ = home_.open(ProcessRole::mainApplication, std::move(services_));
  store_->setFilter({Filter::All{}});
  process_ = std::make_unique<MainProcess>(*store_, windowServices);
  process_->raise();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

QWidget* ApplicationFixture::findShown(const QString& name) const {
  const auto found = window().findChildren<QWidget*>(name);
  const auto shown = std::ranges::find_if(found, [](const QWidget* widget) { return widget->isVisible(); });
  return shown == found.end() ? nullptr : *shown;
}

QWidget& ApplicationFixture::shownPart(const char* name) const {
  const auto objectName = QString::fromLatin1(name);
  if (!waitUntil([&] { return isShown(objectName); }))
    throw std::runtime_error(std::string("nothing shown is ") + name);
  return *findShown(objectName);
}

GridView* ApplicationFixture::grid() const {
  return dynamic_cast<GridView*>(findShown(QStringLiteral("gallery.grid")));
}

std::vector<std::string> ApplicationFixture::shownNames() const {
  const auto* shown = grid();
  return shown == nullptr ? std::vector<std::string>() : namesOf(shown->shots());
}

bool ApplicationFixture::comesToShow(const std::vector<std::string>& names) const {
  return waitUntil([&] { return shownNames() == names; });
}

void ApplicationFixture::clickPart(const char* name) const {
  auto& widget = part(name);
  QTest::mouseClick(&widget, Qt::LeftButton, {}, widget.rect().center());
}

void ApplicationFixture::clickRow(const QString& title) const {
  auto& sidebar = part<Sidebar>("sidebar");
  QModelIndexList rows;
  const auto isThere = [&] {
    const auto first = sidebar.model()->index(0, 0);
    rows = sidebar.model()->match(first, Qt::DisplayRole, title, 1, Qt::MatchExactly);
    return !rows.isEmpty();
  };
  if (!waitUntil(isThere)) throw std::runtime_error("no row " + title.toStdString());
  QTest::mouseClick(sidebar.viewport(), Qt::LeftButton, {}, sidebar.visualRect(rows.front()).center());
}

QPoint ApplicationFixture::placeOfShot(std::string_view name) const {
  std::optional<std::size_t> cell;
  const auto isThere = [&] {
    const auto names = shownNames();
    const auto found = std::ranges::find(names, name);
    if (found != names.end()) cell = static_cast<std::size_t>(found - names.begin());
    return cell.has_value();
  };
  if (!waitUntil(isThere)) throw std::runtime_error("the gallery does not show " + std::string(name));
  grid()->reveal(*cell);
  return grid()->viewport()->mapToGlobal(grid()->cellPlace(*cell).center());
}

void ApplicationFixture::clickShot(std::string_view name, Qt::KeyboardModifiers modifiers) const {
  const auto place = placeOfShot(name);
  auto* viewport = grid()->viewport();
  grid()->setFocus(Qt::MouseFocusReason);
  QTest::mouseClick(viewport, Qt::LeftButton, modifiers, viewport->mapFromGlobal(place));
}

void ApplicationFixture::typeInto(const char* field, const QString& text) const {
  auto& widget = part(field);
  widget.setFocus(Qt::MouseFocusReason);
  // Fields of one line and of several have a slot of that name.
  EXPECT_TRUE(QMetaObject::invokeMethod(&widget, "selectAll")) << field;
  QTest::keyClick(&widget, Qt::Key_Delete);
  QTest::keyClicks(&widget, text);
}

void ApplicationFixture::chooseFromMenu(const char* action) const {
  auto* found = window().findChild<QAction*>(QString::fromLatin1(action));
  if (found == nullptr) throw std::runtime_error(std::string("no action ") + action);
  EXPECT_TRUE(waitUntil([found] { return found->isEnabled(); })) << action;
  found->trigger();
}

void ApplicationFixture::press(int key, Qt::KeyboardModifiers modifiers) const {
  auto* focused = QApplication::focusWidget();
  if (focused == nullptr) throw std::runtime_error("nothing has the focus");
  QTest::keyClick(focused, static_cast<Qt::Key>(key), modifiers);
}

std::optional<Shot> ApplicationFixture::catalogued(std::string_view name) const {
  const auto database = Database::open(home_.folders().applicationSupport + "/nimbrel.sqlite");
  EXPECT_TRUE(database);
  const auto rows = database.value()->allShots({});
  const auto found = std::ranges::find(rows, name, [](const ShotPtr& row) { return row->name; });
  return found == rows.end() ? std::nullopt : std::optional(**found);
}

}  // namespace Nimbrel::Testing
