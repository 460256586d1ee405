#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

namespace Nimbrel {

/// Undo, Redo, Cut, Copy and Paste of a menu, which are about the text field that has the focus; a field takes their
/// keys by itself. Without a field Paste does something else. Keys of other commands are kept from the
/// field, or left to it.
class TextCommands final : public QObject {
  Q_OBJECT

 public:
  /// For the fields of that window, which owns this object.
  explicit TextCommands(QWidget& window);

  /// Adds the five to a menu.
  void addTo(QMenu& menu);
  /// What Paste does where no text field has the focus.
  void setPasteElsewhere(std::function<void()> paste) { pasteElsewhere_ = std::move(paste); }
  /// From now on the key of an action reaches it also from within a text field that would know something to do with it.
  void keepFromFields(QAction& action) { kept_.push_back(&action); }
  /// The same the other way about: within a text field that can be written in, the key is the field's alone.
  void leaveToFields(QAction& action) { left_.push_back(&action); }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void addCommand(QMenu& menu, const QString& name, const QString& title, const QString& keys, const char* slot);
  void follow(QWidget* focused);
  void run(const char* slot);
  void refresh();

  QWidget& window_;
  QPointer<QWidget> field_;  ///< that has the focus, or had it before a menu took it
  std::vector<QAction*> commands_;
  std::vector<QAction*> kept_;
  std::vector<QAction*> left_;
  std::function<void()> pasteElsewhere_;
};

}  // namespace Nimbrel
