#pragma once

#include "Views/Inspector/ShotSection.h"

#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// What the codes in a shot say; absent where there are none.
class CodesSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit CodesSection(const InspectorContext& context);

 protected:
  void fill(const Shot& shot) override;

 private:
  QWidget* row(const std::string& code, const QString& name);

  std::vector<std::string> codes_;  ///< that have rows
};

}  // namespace Nimbrel
