#pragma once

#include "Model/Models.h"
#include "Store/Store.h"
#include "Views/Inspector/InspectorDrafts.h"
#include "Views/Shared/AppIcons.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/FieldText.h"
#include "Views/Shared/FormSection.h"

#include <functional>
#include <utility>

namespace Nimbrel {

/// What the parts of the inspector work with; all of it outlives them.
struct InspectorContext {
  Store& store;
  AppIcons& icons;
  InspectorDrafts& drafts;
};

/// One section of the inspector's form. Each time it is handed a shot it brings what it shows in line with shot and
/// drafts, and keeps the widgets that need not change.
class ShotSection : public FormSection {
  Q_OBJECT

 public:
  ShotSection(const InspectorContext& context, const QString& title) : FormSection(title), context_(context) {}

  void setShot(const ShotPtr& shot) {
    shot_ = shot;
    fill(*shot);
  }

 protected:
  virtual void fill(const Shot& shot) = 0;

  [[nodiscard]] Store& store() const { return context_.store; }
  [[nodiscard]] AppIcons& icons() const { return context_.icons; }
  [[nodiscard]] InspectorDrafts& drafts() const { return context_.drafts; }
  /// Null until there is one.
  [[nodiscard]] const ShotPtr& shot() const { return shot_; }
  /// Whether the shot's row is still there, and its id not gone to another.
  [[nodiscard]] bool isInCatalogue() const;
  /// Does something with the shot, which may be another one by then, once it may be handed out.
  void handOut(std::function<void(Store& store, const Shot& shot)> action) const {
    store().withAccess({shot_}, [&store = store(), shot = shot_, action = std::move(action)] { action(store, *shot); });
  }

 private:
  InspectorContext context_;
  ShotPtr shot_;
};

/// A link as low as the rows of a form are.
[[nodiscard]] LinkButton* rowLink(const QString& text, const QString& objectName);

}  // namespace Nimbrel
