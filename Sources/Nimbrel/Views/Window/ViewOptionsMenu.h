#pragma once

#include "Catalogue/Settings.h"

#include <QAction>
#include <QMenu>

#include <functional>
#include <utility>
#include <vector>

namespace Nimbrel {

/// How the gallery shows its shots, and whether their details stand beside it.
class ViewOptionsMenu final : public QMenu {
  Q_OBJECT

 public:
  /// The settings must outlive it.
  explicit ViewOptionsMenu(Settings& settings, QWidget* parent = nullptr);

  /// What the last item does depends on whether the details are shown.
  void setDetailsShown(bool shown);

  /// The symbol of the layout.
  [[nodiscard]] static QString symbolOf(GalleryLayout layout);

 Q_SIGNALS:
  void detailsToggled();

 private:
  void addLayouts();
  void addOrders();
  void addSizes();
  QAction* addChoice(const QString& name, const QString& text, std::function<bool()> isChosen,
                     std::function<void()> choose);
  void showSettings();

  Settings& settings_;
  std::vector<std::pair<QAction*, std::function<bool()>>> choices_;
  QAction* details_ = nullptr;
};

}  // namespace Nimbrel
