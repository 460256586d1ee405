#pragma once

#include <QDialog>
#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// What Nimbrel promises about the user's data. Nothing in it changes.
class PrivacyPolicyView final : public QDialog {
  Q_OBJECT

 public:
  explicit PrivacyPolicyView(QWidget* parent);

 private:
  [[nodiscard]] QWidget* makeHeader();
  [[nodiscard]] QWidget* makeScroller();
  static void addSections(QVBoxLayout& column);
};

}  // namespace Nimbrel
