#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

namespace Nimbrel {

/// The popover in which the user corrects which application a shot shows. It opens below a control and closes on Escape
/// or a click outside; what is chosen is told before it closes, and it says nothing when it only closes.
class SourceEditor final : public QWidget {
  Q_OBJECT

 public:
  /// `draft` is what the field begins with.
  SourceEditor(const QString& draft, QWidget* parent);

  /// Opens with the focus in the field.
  void openBelow(const QWidget& control);

 Q_SIGNALS:
  /// The name to use from now on, without white space at its ends and never empty.
  void saved(const QString& name);
  /// No name of the user's is to be used any more.
  void cleared();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* buttonRow();
  void save();
  void clear();

  QLineEdit* field_;
  QPushButton* save_ = nullptr;
};

}  // namespace Nimbrel
