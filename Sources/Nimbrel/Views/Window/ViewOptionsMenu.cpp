#include "Views/Window/ViewOptionsMenu.h"

#include "Views/Shared/Symbols.h"

#include <array>

namespace Nimbrel {

namespace {

struct Layout {
  GalleryLayout layout;
  const char* name;
  const char* text;
};
constexpr std::array layouts{Layout{GalleryLayout::grid, "grid", "Grid"},
                             Layout{GalleryLayout::gallery, "gallery", "Gallery"}};

struct Order {
  GallerySort sort;
  const char* name;
  const char* text;
};
constexpr std::array orders{Order{GallerySort::newest, "newest", "Newest First"},
                            Order{GallerySort::oldest, "oldest", "Oldest First"},
                            Order{GallerySort::name, "name", "Name"}};

struct Size {
  double edge;  ///< of a cell, in device-independent pixels
  const char* name;
  const char* text;
};
constexpr std::array sizes{Size{140, "small", "Small Thumbnails"}, Size{190, "medium", "Medium Thumbnails"},
                           Size{270, "large", "Large Thumbnails"}};

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

}  // namespace

ViewOptionsMenu::ViewOptionsMenu(Settings& settings, QWidget* parent) : QMenu(parent), settings_(settings) {
  setObjectName(QStringLiteral("viewOptions.menu"));
  setTitle(QStringLiteral("View Options"));
  addLayouts();
  addSeparator();
  addOrders();
  addSeparator();
  addSizes();
  addSeparator();
  details_ = addAction(Symbols::icon(QStringLiteral("sidebar.right")), QString());
  details_->setObjectName(QStringLiteral("viewOptions.details"));
  connect(details_, &QAction::triggered, this, &ViewOptionsMenu::detailsToggled);
  setDetailsShown(true);
  showSettings();
  connect(&settings, &Settings::changed, this, &ViewOptionsMenu::showSettings);
}

void ViewOptionsMenu::setDetailsShown(bool shown) {
  details_->setText(shown ? QStringLiteral("Hide Details") : QStringLiteral("Show Details"));
}

QString ViewOptionsMenu::symbolOf(GalleryLayout layout) {
  return layout == GalleryLayout::grid ? QStringLiteral("square.grid.2x2") : QStringLiteral("rectangle.on.rectangle");
}

void ViewOptionsMenu::addLayouts() {
  addSection(QStringLiteral("View As"));
  for (const auto& [layout, name, title] : layouts) {
    auto* action = addChoice(
        text(name), text(title), [this, layout = layout] { return settings_.galleryLayout() == layout; },
        [this, layout = layout] { settings_.galleryLayout.set(layout); });
    action->setIcon(Symbols::icon(symbolOf(layout)));
  }
}

void ViewOptionsMenu::addOrders() {
  addSection(QStringLiteral("Sort"));
  for (const auto& [sort, name, title] : orders) {
    addChoice(
        text(name), text(title), [this, sort = sort] { return settings_.gallerySort() == sort; },
        [this, sort = sort] { settings_.gallerySort.set(sort); });
  }
  addChoice(
      QStringLiteral("groupByDay"), QStringLiteral("Group by Day"), [this] { return settings_.groupByDay(); },
      [this] { settings_.groupByDay.set(!settings_.groupByDay()); });
}

void ViewOptionsMenu::addSizes() {
  for (const auto& [edge, name, title] : sizes) {
    auto* action = addAction(text(title));
    action->setObjectName(QStringLiteral("viewOptions.") + text(name));
    connect(action, &QAction::triggered, this, [this, edge = edge] { settings_.thumbSize.set(edge); });
  }
}

QAction* ViewOptionsMenu::addChoice(const QString& name, const QString& title, std::function<bool()> isChosen,
                                    std::function<void()> choose) {
  auto* action = addAction(title);
  action->setObjectName(QStringLiteral("viewOptions.") + name);
  action->setCheckable(true);
  connect(action, &QAction::triggered, this, [this, choose = std::move(choose)] {
    choose();
    // The menu has turned the mark over; what is set says whether it stays.
    showSettings();
  });
  choices_.emplace_back(action, std::move(isChosen));
  return action;
}

void ViewOptionsMenu::showSettings() {
  for (const auto& [action, isChosen] : choices_) action->setChecked(isChosen());
}

}  // namespace Nimbrel
