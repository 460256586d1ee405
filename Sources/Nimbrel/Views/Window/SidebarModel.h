#pragma once

#include "Views/Shared/AppIcons.h"
#include "Views/Window/SidebarSections.h"

#include <QAbstractListModel>
#include <QIcon>

#include <string>
#include <variant>
#include <vector>

namespace Nimbrel {

/// The sidebar's sections as one list: titles, which nothing can be done with, and rows. Main thread.
class SidebarModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  /// The icons must outlive it.
  explicit SidebarModel(AppIcons& icons, QObject* parent = nullptr);

  /// Shows these from now on. Rows that stay where they are are told as changed, anything else as a new list.
  void setSections(const std::vector<SidebarSection>& sections);

  /// Null for the title of a section and for an index that is none.
  [[nodiscard]] const SidebarRow* rowAt(const QModelIndex& index) const;
  /// Not valid when nothing selects that.
  [[nodiscard]] QModelIndex indexOf(const Filter& filter) const;
  /// The icon of the row's application; null where there is none to show, and the row's symbol stands for it.
  [[nodiscard]] QIcon iconAt(const QModelIndex& index) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  /// The title of a section, or one of its rows.
  using Entry = std::variant<std::string, SidebarRow>;

  [[nodiscard]] bool standsAlike(const std::vector<Entry>& entries) const;

  AppIcons& icons_;
  std::vector<Entry> entries_;
};

}  // namespace Nimbrel
