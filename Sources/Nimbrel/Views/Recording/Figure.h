#pragma once

#include <QWidget>

namespace Nimbrel {

/// A widget that shows something and takes no input, which is a picture to assistive technology: it needs an accessible
/// name.
class Figure : public QWidget {
  Q_OBJECT

 public:
  explicit Figure(QWidget* parent = nullptr);
};

}  // namespace Nimbrel
