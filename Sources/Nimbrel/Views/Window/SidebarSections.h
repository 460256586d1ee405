#pragma once

#include "Model/Filter.h"
#include "Platform/FrontApplication.h"
#include "Store/Store.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// One row of the sidebar, as it is to be shown. A plain value.
struct SidebarRow {
  Filter filter;                           ///< what it selects
  std::string title;                       ///< from the user and from pictures: may hold anything
  std::string symbol;                      ///< before the title, where there is no icon of the application
  std::optional<Application> application;  ///< whose icon is to be shown, if it can be found
  std::size_t count = 0;                   ///< the badge; 0 shows none

  bool operator==(const SidebarRow&) const = default;
};

/// Rows under a title, which is empty for the first ones.
struct SidebarSection {
  std::string title;
  std::vector<SidebarRow> rows;

  bool operator==(const SidebarSection&) const = default;
};

/// All that there is to choose from, from top to bottom. A section without rows is left out. Main thread.
[[nodiscard]] std::vector<SidebarSection> sidebarSections(const Store& store);

/// Makes a row's filter the Store's; a saved search is searched for again.
void chooseFilter(Store& store, const Filter& filter);

}  // namespace Nimbrel
