#include "Views/QuickFind/QuickFindResults.h"

#include "Foundation/Formats.h"
#include "Foundation/Text.h"
#include "Views/Shared/ShotWords.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace Nimbrel {

namespace {

/// More of a line than any row has room for; texts without line breaks can be very long.
constexpr std::size_t longestTitle = 512;

QString titleOf(const Shot& shot) { return shownText(Text::fittingIn(longestTitle, shot.ocrHeadline())); }

QString kindAndDate(const Shot& shot) {
  return shownText(std::string(shot.captureTypeLabel()) + " · " + Formats::mediumDateShortTime(shot.date));
}

}  // namespace

QuickFindResults::QuickFindResults(const Store& store, QObject* parent) : QAbstractListModel(parent), store_(store) {
  connect(&store, &Store::shotsChanged, this, &QuickFindResults::catchUp);
  connect(&store, &Store::unlockedSensitiveIDsChanged, this, &QuickFindResults::refresh);
  connect(&store.settings(), &Settings::changed, this, &QuickFindResults::refresh);
}

void QuickFindResults::setText(const QString& text) {
  text_ = text;
  search();
}

void QuickFindResults::search() {
  const auto text = text_.toStdString();
  const auto trimmed = Text::trimmed(text);
  auto found = trimmed.empty() ? ShotList() : store_.matching(trimmed);
  if (found.size() > most) found.resize(most);
  beginResetModel();
  shots_ = std::move(found);
  highlighted_ = 0;
  endResetModel();
  Q_EMIT highlightedChanged();
}

void QuickFindResults::catchUp() {
  if (shots_.empty()) return;
  std::unordered_map<ShotID, ShotPtr*> known;
  for (auto& shot : shots_) known.emplace(shot->id, &shot);
  for (const auto& row : store_.shots()) {
    const auto found = known.find(row->id);
    // An id may come again after its row is gone.
    if (found != known.end() && (*found->second)->added == row->added) *found->second = row;
  }
  refresh();
}

void QuickFindResults::refresh() {
  if (!shots_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

QuickFindRow QuickFindResults::rowAt(int position) const {
  const auto& shot = *shots_.at(static_cast<std::size_t>(position));
  const bool isProtected = store_.isProtected(shot);
  return {.title = isProtected ? tr("Sensitive screenshot") : titleOf(shot),
          .subtitle = isProtected ? tr("Unlock to preview") : kindAndDate(shot),
          .isProtected = isProtected,
          .isSensitive = !shot.sensitive.empty()};
}

void QuickFindResults::highlight(int position) {
  if (position >= 0 && position < rowCount()) setHighlighted(position);
}

void QuickFindResults::moveDown() { setHighlighted(std::min(highlighted_ + 1, std::max(rowCount() - 1, 0))); }

void QuickFindResults::moveUp() { setHighlighted(std::max(highlighted_ - 1, 0)); }

void QuickFindResults::setHighlighted(int position) {
  if (std::exchange(highlighted_, position) != position) Q_EMIT highlightedChanged();
}

std::optional<ShotPtr> QuickFindResults::selected() const {
  const auto position = static_cast<std::size_t>(highlighted_);
  return position < shots_.size() ? std::optional(shots_[position]) : std::nullopt;
}

int QuickFindResults::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shots_.size());
}

QVariant QuickFindResults::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  if (role == Qt::DisplayRole) return rowAt(index.row()).title;
  if (role != Qt::AccessibleTextRole) return {};
  const auto row = rowAt(index.row());
  return tr("%1, %2").arg(row.title, row.subtitle);
}

}  // namespace Nimbrel
