#pragma once

#include <QLineEdit>

namespace Nimbrel {

/// A field for a file's name. While it is not being edited it shows the name on one line, shortened at its end, in
/// which nothing steers the text around it; its text stays the name as it is.
class NameField final : public QLineEdit {
  Q_OBJECT

 public:
  explicit NameField(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace Nimbrel
