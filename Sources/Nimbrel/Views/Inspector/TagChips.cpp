#include "Views/Inspector/TagChips.h"

#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int chipSpacing = 5;
constexpr std::size_t portion = 50;

void discard(QWidget* widget) {
  // Later, since a button in it may be what asked for it.
  widget->hide();
  widget->setParent(nullptr);
  widget->deleteLater();
}

}  // namespace

TagChips::TagChips(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(0, 0, 0, 0);
  startAnew();
  setObjectName(QStringLiteral("inspector.tagChips"));
  setAccessibleName(tr("Tags"));
}

void TagChips::setTags(const std::vector<std::string>& tags) {
  if (tags == tags_) return;
  tags_ = tags;
  dropOthers();
  addPortion();
  setHidden(tags_.empty());
}

void TagChips::dropOthers() {
  std::vector<Entry> kept;
  std::vector<Entry> others;
  for (const auto& entry : chips_) {
    const bool isNext = kept.size() < tags_.size() && entry.tag == tags_[kept.size()];
    (isNext ? kept : others).push_back(entry);
  }
  if (others.size() > portion) return startAnew();
  for (const auto& entry : others) discard(entry.chip);
  chips_ = std::move(kept);
}

void TagChips::startAnew() {
  chips_.clear();
  if (rows_ != nullptr) discard(rows_);
  rows_ = new QWidget;
  flow_ = new FlowLayout(chipSpacing, rows_);
  column_->addWidget(rows_);
  // That of a form which is seen already is shown by nobody else.
  rows_->show();
}

void TagChips::addPortion() {
  const auto end = std::min(tags_.size(), chips_.size() + portion);
  // Laid out once, and not anew for each chip that appears among thousands.
  flow_->setEnabled(false);
  while (chips_.size() < end) add(tags_[chips_.size()]);
  flow_->setEnabled(true);
  flow_->invalidate();
  flow_->activate();
  if (chips_.size() < tags_.size()) {
    more_.start(0, this);
  } else {
    more_.stop();
  }
}

void TagChips::add(const std::string& tag) {
  auto* chip = new Chip(QString::fromStdString(tag), Chip::Kind::Removable, rows_);
  chip->setObjectName(QStringLiteral("inspector.tag.") + chip->text());
  chip->removeButton()->setObjectName(QStringLiteral("inspector.removeTag.") + chip->text());
  connect(chip, &Chip::removeRequested, this, [this, tag] { Q_EMIT removeRequested(tag); });
  flow_->addWidget(chip);
  chip->show();
  chips_.push_back({tag, chip});
}

void TagChips::timerEvent(QTimerEvent* event) {
  if (event->timerId() != more_.timerId()) return QWidget::timerEvent(event);
  addPortion();
}

}  // namespace Nimbrel
