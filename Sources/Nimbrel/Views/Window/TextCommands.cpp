#include "Views/Window/TextCommands.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>
#include <string_view>

namespace Nimbrel {

namespace {

constexpr const char* pasteSlot = "paste";

bool isField(const QWidget* widget) {
  return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QTextEdit*>(widget) ||
         qobject_cast<const QPlainTextEdit*>(widget);
}

}  // namespace

TextCommands::TextCommands(QWidget& window) : QObject(&window), window_(window) {
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*former*/, QWidget* now) { follow(now); });
}

void TextCommands::addTo(QMenu& menu) {
  addCommand(menu, QStringLiteral("menu.undo"), QStringLiteral("Undo"), QStringLiteral("Ctrl+Z"), "undo");
  addCommand(menu, QStringLiteral("menu.redo"), QStringLiteral("Redo"), QStringLiteral("Ctrl+Shift+Z"), "redo");
  menu.addSeparator();
  addCommand(menu, QStringLiteral("menu.cut"), QStringLiteral("Cut"), QStringLiteral("Ctrl+X"), "cut");
  addCommand(menu, QStringLiteral("menu.copy"), QStringLiteral("Copy"), QStringLiteral("Ctrl+C"), "copy");
  addCommand(menu, QStringLiteral("menu.paste"), QStringLiteral("Paste"), QStringLiteral("Ctrl+V"), pasteSlot);
  refresh();
}

void TextCommands::addCommand(QMenu& menu, const QString& name, const QString& title, const QString& keys,
                              const char* slot) {
  auto* action = menu.addAction(title);
  action->setObjectName(name);
  action->setShortcut(QKeySequence(keys));
  connect(action, &QAction::triggered, this, [this, slot] { run(slot); });
  commands_.push_back(action);
}

void TextCommands::follow(QWidget* focused) {
  // A menu takes the focus and gives it back; no widget has it while another window does.
  if (focused == nullptr || qobject_cast<QMenu*>(focused) || qobject_cast<QMenuBar*>(focused)) return;
  if (field_) field_->removeEventFilter(this);
  field_ = isField(focused) && focused->window() == &window_ ? focused : nullptr;
  if (field_) field_->installEventFilter(this);
  refresh();
}

void TextCommands::run(const char* slot) {
  if (field_) {
    QMetaObject::invokeMethod(field_.data(), slot);
  } else if (std::string_view(slot) == pasteSlot && pasteElsewhere_) {
    pasteElsewhere_();
  }
}

void TextCommands::refresh() {
  // An action that is off leaves its key to whatever has the focus.
  for (auto* action : commands_) action->setEnabled(field_ || action == commands_.back());
}

bool TextCommands::eventFilter(QObject* /*object*/, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
  const bool isKept = std::ranges::any_of(
      kept_, [&keys](const QAction* action) { return action->isEnabled() && action->shortcut() == keys; });
  if (isKept) event->ignore();
  return isKept;
}

}  // namespace Nimbrel
