#pragma once

#include "Views/Inspector/ShotSection.h"

namespace Nimbrel {

/// A row of a thing that was found in a shot: a symbol, its text on one line, and links for what can be done with it.
class ItemRow final : public QWidget {
  Q_OBJECT

 public:
  /// `mode` says where the text is shortened.
  ItemRow(const QString& symbol, const std::string& text, Qt::TextElideMode mode);

  /// The text, which can be made selectable.
  [[nodiscard]] ElidedLabel& label() { return *label_; }
  /// Another link at the end; its object name is that of the row and `name`.
  LinkButton* addLink(const QString& title, const QString& name);

 private:
  ElidedLabel* label_;
  QHBoxLayout* line_;
};

}  // namespace Nimbrel
