#include "Views/Window/SidebarModel.h"

#include "Views/Shared/ShotWords.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

/// Badges are read with their row.
QString spokenText(const SidebarRow& row) {
  auto title = shownText(row.title);
  if (row.count == 0) return title;
  return title + QStringLiteral(", ") + QLocale().toString(static_cast<qulonglong>(row.count));
}

/// A name that looks like markup is none.
QString toolTip(const SidebarRow& row) {
  return QStringLiteral("<qt>%1</qt>").arg(shownText(row.title).toHtmlEscaped());
}

}  // namespace

SidebarModel::SidebarModel(AppIcons& icons, QObject* parent) : QAbstractListModel(parent), icons_(icons) {}

void SidebarModel::setSections(const std::vector<SidebarSection>& sections) {
  std::vector<Entry> entries;
  for (const auto& section : sections) {
    if (!section.title.empty()) entries.emplace_back(section.title);
    for (const auto& row : section.rows) entries.emplace_back(row);
  }
  if (entries == entries_) return;
  if (standsAlike(entries)) {
    entries_ = std::move(entries);
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    return;
  }
  beginResetModel();
  entries_ = std::move(entries);
  endResetModel();
}

bool SidebarModel::standsAlike(const std::vector<Entry>& entries) const {
  return std::ranges::equal(entries, entries_, [](const Entry& one, const Entry& other) {
    const auto* row = std::get_if<SidebarRow>(&one);
    const auto* otherRow = std::get_if<SidebarRow>(&other);
    return row && otherRow ? row->filter == otherRow->filter : one == other;
  });
}

const SidebarRow* SidebarModel::rowAt(const QModelIndex& index) const {
  if (!index.isValid()) return nullptr;
  return std::get_if<SidebarRow>(&entries_[static_cast<std::size_t>(index.row())]);
}

QModelIndex SidebarModel::indexOf(const Filter& filter) const {
  const auto found = std::ranges::find_if(entries_, [&filter](const Entry& entry) {
    const auto* row = std::get_if<SidebarRow>(&entry);
    return row && row->filter == filter;
  });
  return found == entries_.end() ? QModelIndex() : index(static_cast<int>(found - entries_.begin()));
}

QIcon SidebarModel::iconAt(const QModelIndex& index) const {
  const auto* row = rowAt(index);
  if (row == nullptr || !row->application) return {};
  return icons_.icon(row->application->name, row->application->bundleID);
}

int SidebarModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant SidebarModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto* row = rowAt(index);
  if (row == nullptr) {
    const auto& title = std::get<std::string>(entries_[static_cast<std::size_t>(index.row())]);
    return role == Qt::DisplayRole ? QVariant(shownText(title)) : QVariant();
  }
  switch (role) {
    case Qt::DisplayRole:
      return shownText(row->title);
    case Qt::AccessibleTextRole:
      return spokenText(*row);
    case Qt::ToolTipRole:
      return std::holds_alternative<Filter::Content>(row->filter.choice) ? QVariant(toolTip(*row)) : QVariant();
    default:
      return {};
  }
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex& index) const {
  if (rowAt(index) == nullptr) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

}  // namespace Nimbrel
