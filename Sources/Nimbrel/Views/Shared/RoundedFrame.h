#pragma once

#include "Views/Shared/Theme.h"

#include <QWidget>

namespace Nimbrel {

/// The outline of a table or list with round corners, laid over it: what a view paints into its corners is covered by
/// the colour of the surface on which it stands. Follows the size of its parent and takes no clicks.
class RoundedFrame final : public QWidget {
  Q_OBJECT

 public:
  explicit RoundedFrame(QWidget* parent, Token surface = Token::Window);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Token surface_;
};

}  // namespace Nimbrel
