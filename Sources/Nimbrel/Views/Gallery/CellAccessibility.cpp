#include "Views/Gallery/CellAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <unordered_map>
#include <utility>

namespace Nimbrel {

namespace {

/// One cell by its number. It is made anew when the cells change, so that it never speaks of another shot.
class CellItem final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  CellItem(QWidget& widget, CellHost& host, std::size_t cell) : widget_(&widget), host_(host), cell_(cell) {}

  [[nodiscard]] bool isValid() const override { return widget_ && cell_ < host_.cellCount(); }
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QWindow* window() const override { return widget_ ? widget_->window()->windowHandle() : nullptr; }
  [[nodiscard]] QAccessibleInterface* parent() const override {
    return widget_ ? QAccessible::queryAccessibleInterface(widget_) : nullptr;
  }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
  [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name && isValid() ? host_.cellName(cell_) : QString();
  }
  void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
  [[nodiscard]] QRect rect() const override {
    if (!isValid()) return {};
    const auto place = host_.cellPlace(cell_);
    return {widget_->mapToGlobal(place.topLeft()), place.size()};
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid) return state;
    state.selectable = true;
    state.focusable = true;
    state.selected = host_.isCellSelected(cell_);
    state.focused = state.selected && widget_->hasFocus();
    state.offscreen = !widget_->rect().intersects(host_.cellPlace(cell_));
    state.invisible = !widget_->isVisible();
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override {
    if (name == pressAction() && isValid()) host_.chooseCell(cell_);
  }
  [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

  [[nodiscard]] std::size_t cell() const { return cell_; }

 private:
  QPointer<QWidget> widget_;
  CellHost& host_;  ///< the same object, alive while that is
  std::size_t cell_;
};

class CellList final : public QAccessibleWidget {
 public:
  CellList(QWidget* widget, CellHost& host) : QAccessibleWidget(widget, QAccessible::List), host_(host) {}
  ~CellList() override { forgetItems(); }
  CellList(const CellList&) = delete;
  CellList& operator=(const CellList&) = delete;

  [[nodiscard]] int childCount() const override { return static_cast<int>(host_.cellCount()); }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    const auto cell = static_cast<std::size_t>(index);
    if (const auto known = items_.find(cell); known != items_.end()) {
      return QAccessible::accessibleInterface(known->second);
    }
    auto* item = new CellItem(*widget(), host_, cell);
    items_.emplace(cell, QAccessible::registerAccessibleInterface(item));
    return item;
  }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
    const auto* item = dynamic_cast<const CellItem*>(child);
    return item != nullptr && item->isValid() ? static_cast<int>(item->cell()) : -1;
  }
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
    const auto cell = host_.cellAt(widget()->mapFromGlobal(QPoint(x, y)));
    return cell ? child(static_cast<int>(*cell)) : nullptr;
  }

  void forgetItems() {
    for (const auto& [cell, id] : std::exchange(items_, {})) QAccessible::deleteAccessibleInterface(id);
  }

 private:
  CellHost& host_;
  mutable std::unordered_map<std::size_t, QAccessible::Id> items_;  ///< those that were asked for
};

QAccessibleInterface* interfaceFor(const QString& /*className*/, QObject* object) {
  auto* host = dynamic_cast<CellHost*>(object);
  auto* widget = qobject_cast<QWidget*>(object);
  return host != nullptr && widget != nullptr ? new CellList(widget, *host) : nullptr;
}

}  // namespace

void installCellAccessibility() {
  static const bool isInstalled = [] {
    QAccessible::installFactory(interfaceFor);
    return true;
  }();
  Q_UNUSED(isInstalled)
}

void tellCellsChanged(QWidget& host) {
  if (!QAccessible::isActive()) return;
  if (auto* list = dynamic_cast<CellList*>(QAccessible::queryAccessibleInterface(&host))) list->forgetItems();
  QAccessibleEvent event(&host, QAccessible::ObjectReorder);
  QAccessible::updateAccessibility(&event);
}

void tellCellFocused(QWidget& host, std::size_t cell) {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent event(&host, QAccessible::Focus);
  event.setChild(static_cast<int>(cell));
  QAccessible::updateAccessibility(&event);
}

}  // namespace Nimbrel
