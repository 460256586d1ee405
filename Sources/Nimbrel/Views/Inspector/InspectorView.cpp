#include "Views/Inspector/InspectorView.h"

#include "Views/Inspector/InspectorForm.h"
#include "Views/Inspector/InspectorPicture.h"
#include "Views/Inspector/LockedPanel.h"
#include "Views/Shared/Hairline.h"

#include <QHideEvent>
#include <QPointer>
#include <QShowEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace Nimbrel {

InspectorView::InspectorView(Store& store, AppIcons& icons, ThumbCache& thumbs, GalleryPreviewCache& previews,
                             QWidget* parent)
    : QWidget(parent),
      store_(store),
      icons_(icons),
      picture_(new InspectorPicture(thumbs, previews)),
      scroll_(new QScrollArea) {
  setObjectName(QStringLiteral("inspector"));
  setAccessibleName(tr("Details"));
  scroll_->setObjectName(QStringLiteral("inspector.scroll"));
  setAutoFillBackground(true);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setWidgetResizable(true);
  scroll_->setFocusPolicy(Qt::NoFocus);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(picture_);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(scroll_, 1);
  connect(picture_, &QAbstractButton::clicked, this, &InspectorView::openShot);
  connect(&store_, &Store::shotsChanged, this, &InspectorView::followStore);
  connect(&store_, &Store::derivedChanged, this, &InspectorView::refresh);
  connect(&store_, &Store::unlockedSensitiveIDsChanged, this, &InspectorView::refresh);
  connect(&store_.settings(), &Settings::changed, this, [this](const QString& key) {
    if (key == store_.settings().protectSensitive.key()) refresh();
  });
}

InspectorView::~InspectorView() {
  disconnect(&store_, nullptr, this, nullptr);
  if (isSeen_) saveNote();
}

void InspectorView::setShot(const ShotPtr& shot) {
  if (shot == shot_) return;
  const auto before = std::exchange(shot_, shot);
  if (before && isSameRow(*before, *shot)) {
    drafts_.follow(*before, *shot);
  } else {
    drafts_.load(*shot);
    if (form_ != nullptr) form_->closePopovers();
  }
  refresh();
}

void InspectorView::followStore() {
  if (!shot_) return;
  const auto& shots = store_.shots();
  const auto now = std::ranges::find_if(shots, [&](const ShotPtr& shot) { return isSameRow(*shot, *shot_); });
  if (now != shots.end()) setShot(*now);
}

void InspectorView::refresh() {
  if (!shot_) return;
  const bool isProtected = store_.isProtected(*shot_);
  picture_->setShot(shot_, isProtected ? InspectorPicture::Obscured::Yes : InspectorPicture::Obscured::No);
  isProtected ? showLocked() : showForm();
}

void InspectorView::showForm() {
  if (form_ != nullptr) return form_->setShot(shot_);
  form_ = newForm();
  form_->setShot(shot_);
  replaceContent(form_);
  // Its place counts as the form's margin, whether or not there is something to scroll.
  scroll_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void InspectorView::showLocked() {
  if (form_ == nullptr && scroll_->widget() != nullptr) return;
  if (form_ != nullptr) form_->closePopovers();
  form_ = nullptr;
  auto* panel = new LockedPanel;
  connect(panel, &LockedPanel::unlockRequested, this, [this] { store_.withAccess({shot_}, [] {}); });
  replaceContent(panel);
  scroll_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void InspectorView::replaceContent(QWidget* content) {
  // Deleted later, since a button in it may be what led here.
  if (auto* former = scroll_->takeWidget()) {
    former->hide();
    former->deleteLater();
  }
  scroll_->setWidget(content);
}

InspectorForm* InspectorView::newForm() {
  auto* form = new InspectorForm({.store = store_, .icons = icons_, .drafts = drafts_});
  form->setCanEdit(canEdit_);
  form->setCanPin(canPin_);
  connect(form, &InspectorForm::editClicked, this,
          [this] { handOut([this](const ShotPtr& shot) { Q_EMIT editRequested(shot); }); });
  connect(form, &InspectorForm::pinClicked, this,
          [this] { handOut([this](const ShotPtr& shot) { Q_EMIT pinRequested(shot); }); });
  connect(form, &InspectorForm::shareClicked, this, [this](QWidget* button) {
    handOut([this, button = QPointer(button)](const ShotPtr& shot) {
      if (button) Q_EMIT shareRequested(shot, button);
    });
  });
  return form;
}

void InspectorView::setCanEdit(bool canEdit) {
  canEdit_ = canEdit;
  if (form_ != nullptr) form_->setCanEdit(canEdit);
}

void InspectorView::setCanPin(bool canPin) {
  canPin_ = canPin;
  if (form_ != nullptr) form_->setCanPin(canPin);
}

void InspectorView::openShot() {
  if (shot_) store_.withAccess({shot_}, [&store = store_, shot = shot_] { store.open(*shot); });
}

void InspectorView::handOut(std::function<void(const ShotPtr& shot)> action) {
  store_.withAccess({shot_}, [view = QPointer(this), shot = shot_, action = std::move(action)] {
    if (view) action(shot);
  });
}

void InspectorView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  isSeen_ = true;
  if (!shot_) return;
  drafts_.load(*shot_);
  refresh();
}

void InspectorView::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous()) return;
  isSeen_ = false;
  if (form_ != nullptr) form_->closePopovers();
  saveNote();
}

void InspectorView::saveNote() {
  if (!shot_ || drafts_.note == shot_->note) return;
  const auto row = store_.database().shot(shot_->id);
  if (!row || !isSameRow(*row, *shot_)) return;
  store_.database().setNote(shot_->id, drafts_.note);
  store_.reload();
}

}  // namespace Nimbrel
