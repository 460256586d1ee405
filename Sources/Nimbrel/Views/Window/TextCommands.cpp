#include "Views/Window/TextCommands.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <array>
#include <string_view>

namespace Nimbrel {

namespace {

constexpr const char* pasteSlot = "paste";

bool isField(const QWidget* widget) {
  return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QTextEdit*>(widget) ||
         qobject_cast<const QPlainTextEdit*>(widget);
}

/// What can be done with the text of a field at this moment.
struct Possible {
  bool undo = false;
  bool redo = false;
  bool cut = false;
  bool copy = false;
};

Possible possibleIn(const QLineEdit& line) {
  const bool hasSelection = line.hasSelectedText();
  return {.undo = line.isUndoAvailable(),
          .redo = line.isRedoAvailable(),
          .cut = hasSelection && !line.isReadOnly(),
          .copy = hasSelection};
}

template <class TextField>
Possible possibleInText(const TextField& text) {
  const bool hasSelection = text.textCursor().hasSelection();
  const bool canChange = !text.isReadOnly();
  return {.undo = canChange && text.document()->isUndoAvailable(),
          .redo = canChange && text.document()->isRedoAvailable(),
          .cut = hasSelection && canChange,
          .copy = hasSelection};
}

Possible possibleIn(const QWidget* field) {
  if (const auto* line = qobject_cast<const QLineEdit*>(field)) return possibleIn(*line);
  if (const auto* text = qobject_cast<const QTextEdit*>(field)) return possibleInText(*text);
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(field)) return possibleInText(*text);
  return {};
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
  connect(&menu, &QMenu::aboutToShow, this, &TextCommands::refresh);
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
  // An action that is off leaves its key to the field, which knows by itself what it can do. Paste is always on.
  const auto possible = possibleIn(field_);
  const std::array states{possible.undo, possible.redo, possible.cut, possible.copy};
  for (std::size_t i = 0; i < states.size(); ++i) commands_[i]->setEnabled(states[i]);
}

bool TextCommands::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
  const auto isOneOf = [&keys](const std::vector<QAction*>& actions) {
    return std::ranges::any_of(
        actions, [&keys](const QAction* action) { return action->isEnabled() && action->shortcut() == keys; });
  };
  if (isOneOf(kept_)) {
    event->ignore();
    return true;
  }
  if (object->property("readOnly").toBool() || !isOneOf(left_)) return false;
  event->accept();
  return true;
}

}  // namespace Nimbrel
