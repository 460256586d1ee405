#pragma once

#include "Views/Inspector/ItemFinder.h"
#include "Views/Inspector/ShotSection.h"

namespace Nimbrel {

/// Links, addresses, numbers and dates in the recognised text; absent where there are none.
class FoundSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit FoundSection(const InspectorContext& context);

 protected:
  void fill(const Shot& shot) override;

 private:
  void showItems(const std::vector<DetectedItem>& items);
  QWidget* row(const DetectedItem& item, const QString& name);

  ItemFinder finder_;
};

}  // namespace Nimbrel
