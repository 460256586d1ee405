#pragma once

#include <QMenuBar>

namespace Nimbrel {

/// The titles of menus within the toolbar. Beside what menu bars do by themselves, Tab comes by: the first title is
/// marked then, the arrow keys go on from there, and Down opens a menu.
class MenuTitles final : public QMenuBar {
  Q_OBJECT

 public:
  explicit MenuTitles(QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void movePointerTo(QPoint place);
};

}  // namespace Nimbrel
