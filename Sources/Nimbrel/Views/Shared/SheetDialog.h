#pragma once

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace Nimbrel {

/// A dialog modal to its window, of a size that the user cannot change: a heading, content, and a footer whose buttons
/// stand at its end, the one that cancels first, the default one last. Escape cancels, Return does what the default
/// button does. Shown with open().
class SheetDialog : public QDialog {
  Q_OBJECT

 public:
  /// The heading is the window's title as well.
  SheetDialog(const QString& heading, QWidget* parent);

  /// The column between heading and footer; what is added belongs to the dialog.
  [[nodiscard]] QVBoxLayout* content() const { return content_; }
  /// At the beginning of the footer, for what is said or done beside the buttons.
  [[nodiscard]] QHBoxLayout* footerStart() const { return footerStart_; }

  /// The button that rejects.
  QPushButton* addCancelButton(const QString& title);
  /// A plain button after those that there are; the default one follows it.
  QPushButton* addFurtherButton(const QString& title);
  /// The button at the far end; the caller says what a click does. `accept()` is one thing it may do.
  QPushButton* addDefaultButton(const QString& title);

 private:
  QVBoxLayout* content_;
  QHBoxLayout* footerStart_;
  QHBoxLayout* footerEnd_;
};

}  // namespace Nimbrel
