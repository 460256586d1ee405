#include "Views/Inspector/TagChips.h"

#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int chipSpacing = 5;
constexpr std::size_t portion = 50;

void discard(Chip* chip) {
  // Later, since its button may be what asked for it.
  chip->hide();
  chip->setParent(nullptr);
  chip->deleteLater();
}

}  // namespace

TagChips::TagChips(QWidget* parent) : QWidget(parent), flow_(new FlowLayout(chipSpacing, this)) {
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
  for (const auto& entry : chips_) {
    const bool isNext = kept.size() < tags_.size() && entry.tag == tags_[kept.size()];
    isNext ? kept.push_back(entry) : discard(entry.chip);
  }
  chips_ = std::move(kept);
}

void TagChips::addPortion() {
  const auto end = std::min(tags_.size(), chips_.size() + portion);
  // Laid out once, and not anew for each chip that appears among thousands.
  flow_->setEnabled(false);
  while (chips_.size() < end) add(tags_[chips_.size()]);
  flow_->setEnabled(true);
  flow_->invalidate();
  if (chips_.size() < tags_.size()) {
    more_.start(0, this);
  } else {
    more_.stop();
  }
}

void TagChips::add(const std::string& tag) {
  auto* chip = new Chip(QString::fromStdString(tag), Chip::Kind::Removable, this);
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
