#include "Views/Editor/EditorFixture.h"

#include "Support/Pictures.h"
#include "Support/Waiting.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

#include <utility>

namespace Nimbrel::Testing {

void EditorFixture::makeShot(const NewShot& shot) {
  writePicture(home_.desktop(shot.name), 400, 250, 3);
  shot_ = add(shot);
}

void EditorFixture::setBlocks(std::vector<TextBlock> blocks) {
  reader_.contents[shot_->path] = {.blocks = std::move(blocks), .codes = {}};
}

void EditorFixture::openSheet() {
  if (!shot_) makeShot();
  showSheet(reader_);
  ASSERT_TRUE(waitUntil([this] { return !sheet_->isLoading(); }));
}

void EditorFixture::showSheet(PictureReader& reader) {
  sheet_ = new EditorView(*store_, {.reader = reader, .pasteboard = *pasteboard_}, shot_, &window_);
  sheet_->setAttribute(Qt::WA_DeleteOnClose);
  sheet_->open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet_));
}

void EditorFixture::openWithText() {
  makeShot({.name = "Shot.png", .sensitive = {"Password"}});
  setBlocks({{.text = "Dear all", .rect = {0.1, 0.1, 0.3, 0.06}},
             {.text = "password: hunter2butlonger", .rect = {0.1, 0.2, 0.5, 0.06}},
             {.text = "See you", .rect = {0.1, 0.3, 0.2, 0.06}}});
  openSheet();
}

void EditorFixture::choose(const char* tool) const {
  QTest::mouseClick(in<QAbstractButton>(*sheet_, (std::string("editor.tool.") + tool).c_str()), Qt::LeftButton);
}

QPointF EditorFixture::onCanvas(QPointF point) const {
  const auto geometry = sheet_->canvas().canvasGeometry();
  return geometry.toCanvas({point.x() * geometry.fitted().width(), point.y() * geometry.fitted().height()});
}

void EditorFixture::moveTo(QEvent::Type type, QPointF point, Qt::MouseButton button) const {
  auto* viewport = sheet_->canvas().viewport();
  const auto place = onCanvas(point);
  const auto changed = type == QEvent::MouseMove ? Qt::NoButton : button;
  const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
  QMouseEvent event(type, place, viewport->mapToGlobal(place), changed, held, Qt::NoModifier);
  QApplication::sendEvent(viewport, &event);
}

void EditorFixture::drag(QPointF from, QPointF to) const {
  moveTo(QEvent::MouseButtonPress, from);
  moveTo(QEvent::MouseMove, (from + to) / 2);
  moveTo(QEvent::MouseMove, to);
  moveTo(QEvent::MouseButtonRelease, to);
}

void EditorFixture::placeOneOfEach() const {
  for (const auto* tool : {"Black Bar", "Blur", "Box", "Arrow", "Highlight"}) {
    choose(tool);
    drag({0.2, 0.3}, {0.6, 0.7});
  }
  choose("Step");
  click({0.5, 0.5});
  choose("Label");
  click({0.2, 0.2});
  choose("Crop");
  drag({0.1, 0.1}, {0.9, 0.9});
}

void EditorFixture::click(QPointF point) const {
  moveTo(QEvent::MouseButtonPress, point);
  moveTo(QEvent::MouseButtonRelease, point);
}

void EditorFixture::press(int key, Qt::KeyboardModifiers modifiers) const {
  auto* focused = sheet_->focusWidget();
  QTest::keyClick(focused != nullptr ? focused : sheet_.data(), static_cast<Qt::Key>(key), modifiers);
}

std::vector<Annotation::Kind> EditorFixture::kinds() const {
  std::vector<Annotation::Kind> kinds;
  for (const auto& item : items()) kinds.push_back(item.kind);
  return kinds;
}

bool EditorFixture::awaitClosed() const {
  return waitUntil([this] { return sheet_.isNull(); });
}

}  // namespace Nimbrel::Testing
