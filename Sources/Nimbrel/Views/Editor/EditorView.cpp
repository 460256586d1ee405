#include "Views/Editor/EditorView.h"

#include "Analysis/OCR.h"
#include "Foundation/Background.h"
#include "Foundation/FilePath.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QThreadPool>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int sheetWidth = 860;
constexpr int canvasHeight = 483;

/// A row that a former file of that name has left tells of what that one showed.
void forgetFormer(Store& store, const std::string& path) {
  ShotList former;
  std::ranges::copy_if(store.shots(), std::back_inserter(former),
                       [&path](const ShotPtr& shot) { return shot->path == path; });
  if (!former.empty()) store.forget(former);
}

/// What the user hears of a copy, and what the catalogue does.
void tell(Store& store, const EditorView::Tools& tools, const EditorCopy::Saved& saved) {
  switch (saved.outcome) {
    case EditorCopy::Outcome::Written:
      if (tools.written) tools.written(saved.path);
      forgetFormer(store, saved.path);
      store.importFiles({saved.path});
      return store.setStatus("Saved " + std::string(FilePath::lastComponent(saved.path)));
    case EditorCopy::Outcome::NotRendered:
      return store.setStatus("Could not render the edit");
    case EditorCopy::Outcome::NotWritten:
      return store.setStatus("Could not write the copy");
    case EditorCopy::Outcome::GivenUp:
      return;
  }
}

}  // namespace

EditorView::EditorView(Store& store, Tools tools, ShotPtr shot, QWidget* parent)
    : QDialog(parent),
      store_(store),
      tools_(std::move(tools)),
      shot_(std::move(shot)),
      state_(new EditorState(tools_.pasteboard, this)),
      header_(new EditorHeader(*state_)),
      toolbar_(new EditorToolbar(*state_)),
      canvas_(new EditorCanvas(*state_)),
      footer_(new EditorFooter(
          *state_, shot_->sensitive.empty() ? EditorFooter::HoldsSecrets::No : EditorFooter::HoldsSecrets::Yes)) {
  setObjectName(QStringLiteral("editorSheet"));
  setWindowTitle(tr("Edit"));
  setWindowModality(Qt::WindowModal);
  layOut();
  addKeys();
  connect(footer_, &EditorFooter::pressed, canvas_, &EditorCanvas::endWriting);
  connect(footer_, &EditorFooter::cancelled, this, &EditorView::cancel);
  connect(footer_, &EditorFooter::saveRequested, this, &EditorView::save);
  canvas_->setFocus();
  load();
}

void EditorView::layOut() {
  // Of a small screen it takes what there is.
  const auto room = screen()->availableGeometry().height();
  const auto others = header_->height() + toolbar_->height() + 2 * footer_->height();
  canvas_->setFixedHeight(std::clamp(room - others, canvas_->minimumHeight(), canvasHeight));
  canvas_->setMinimumWidth(sheetWidth);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addWidget(header_);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(toolbar_);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(canvas_);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(footer_);
}

void EditorView::addKeys() {
  // A text field that has the focus takes those of them that it knows.
  addKey(Qt::CTRL | Qt::Key_Z, [this] { state_->undo(); });
  addKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Z, [this] { redo(); });
  addKey(Qt::CTRL | Qt::Key_Y, [this] { redo(); });
  addKey(Qt::CTRL | Qt::Key_0, [this] { canvas_->fit(); });
  addKey(Qt::CTRL | Qt::Key_1, [this] { canvas_->showPixels(); });
  addKey(Qt::CTRL | Qt::Key_Plus, [this] { canvas_->zoomIn(); });
  addKey(Qt::CTRL | Qt::Key_Equal, [this] { canvas_->zoomIn(); });
  addKey(Qt::CTRL | Qt::Key_Minus, [this] { canvas_->zoomOut(); });
}

void EditorView::addKey(const QKeySequence& key, std::function<void()> act) {
  auto* shortcut = new QShortcut(key, this);
  connect(shortcut, &QShortcut::activated, this, std::move(act));
  keys_.push_back(shortcut);
}

void EditorView::redo() {
  // Of its two keys fields know one or the other, depending on the desktop.
  if (auto* field = qobject_cast<QLineEdit*>(focusWidget())) return field->redo();
  state_->redo();
}

std::string EditorView::path() const {
  const auto row =
      std::ranges::find_if(store_.shots(), [this](const ShotPtr& shot) { return isSameRow(*shot, *shot_); });
  return row == store_.shots().end() ? shot_->path : (*row)->path;
}

void EditorView::load() {
  ++loads_;
  isLoading_ = true;
  refresh();
  inBackground(
      this, *QThreadPool::globalInstance(), [path = path()] { return loadEditorPicture(path); },
      [this](EditorPicture picture) { takePicture(std::move(picture)); });
}

void EditorView::takePicture(EditorPicture picture) {
  if (picture.isNull() && !picture_.isNull()) {
    // The file may come back: what is marked stays in sight.
    isLoading_ = false;
    return refresh();
  }
  picture_ = std::move(picture);
  // The lines of a file that was there before are not those of this one.
  state_->setBlocks({});
  if (!picture_.isNull()) state_->setPixelSize(picture_.size());
  canvas_->setPicture(picture_);
  footer_->setHasPicture(!picture_.isNull());
  recognize();
}

void EditorView::recognize() {
  OCR::recognize(this, tools_.reader, path(), [this, load = loads_](std::optional<OCR::Recognition> recognition) {
    if (load != loads_) return;
    state_->setBlocks(recognition ? std::move(recognition->blocks) : std::vector<TextBlock>());
    isLoading_ = false;
    refresh();
  });
}

void EditorView::save() {
  if (isSaving()) return;
  givesUp_ = std::make_shared<std::atomic<bool>>(false);
  refresh();
  // The Store hears of it even when the sheet is closed while the copy is being written.
  inBackground(
      &store_, *QThreadPool::globalInstance(),
      [path = path(), shown = picture_.file, items = state_->items(), givesUp = givesUp_] {
        return EditorCopy::save(path, shown, items, *givesUp);
      },
      [&store = store_, tools = tools_, sheet = QPointer(this), givesUp = givesUp_](const EditorCopy::Saved& saved) {
        if (*givesUp && saved.outcome != EditorCopy::Outcome::Written) return;
        tell(store, tools, saved);
        if (sheet && sheet->isSaving()) sheet->endSaving(saved);
      });
}

void EditorView::endSaving(const EditorCopy::Saved& saved) {
  givesUp_.reset();
  if (saved.outcome != EditorCopy::Outcome::NotRendered) return accept();
  // What the marks would lie on is shown afresh.
  if (stateOfFile(path()) != picture_.file) load();
  refresh();
  canvas_->setFocus();
}

void EditorView::cancel() {
  giveUpSaving();
  reject();
}

void EditorView::giveUpSaving() {
  if (givesUp_) *givesUp_ = true;
}

void EditorView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) return cancel();
  QDialog::keyPressEvent(event);
}

void EditorView::closeEvent(QCloseEvent* event) {
  giveUpSaving();
  QDialog::closeEvent(event);
}

void EditorView::done(int result) {
  givesUp_.reset();
  QDialog::done(result);
}

void EditorView::refresh() {
  const bool canEdit = !isSaving();
  header_->setBusy(isLoading_ || isSaving());
  toolbar_->setEnabled(canEdit);
  canvas_->setEnabled(canEdit);
  footer_->setCanEdit(canEdit);
  for (auto* key : keys_) key->setEnabled(canEdit);
}

QDialog* makeEditor(Store& store, EditorView::Tools tools, EditorTarget& target, QWidget* window) {
  const auto& shot = target.shot();
  if (!shot || store.isProtected(**shot)) return nullptr;
  return new EditorView(store, std::move(tools), *shot, window);
}

}  // namespace Nimbrel
