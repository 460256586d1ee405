#include "Store/Tags.h"

#include "Model/Models.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

std::vector<std::string> withAll(std::vector<std::string> names, const std::vector<std::string>& more) {
  for (const auto& name : more) {
    if (std::ranges::find(names, name) == names.end()) names.push_back(name);
  }
  return names;
}

Tags withoutTag(Tags tags, std::string_view tag) {
  std::erase(tags, tag);
  return tags;
}

std::string withoutCommas(std::string_view text) {
  std::string blanked(text);
  std::ranges::replace(blanked, ',', ' ');
  return blanked;
}

std::string projectTag(std::string_view project) { return std::string(projectTagPrefix) + std::string(project); }

}  // namespace Nimbrel
