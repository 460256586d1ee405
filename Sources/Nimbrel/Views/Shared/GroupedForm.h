#pragma once

#include <QCheckBox>
#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// A form of titled boxes, each of rows parted by rules. A label stands left and what belongs to it right, the other
/// way round in scripts from right to left. Rows grow with their text. The form owns what is added.
class GroupedForm final : public QWidget {
  Q_OBJECT

 public:
  /// Whether a control keeps its size at the end of its row, or fills the rest of it as fields and pickers do.
  enum class Fit { Keep, Fill };

  explicit GroupedForm(QWidget* parent = nullptr);

  /// Begins a box; rows go into the last one. Without a title there is none above it.
  void addSection(const QString& title);
  /// A value that is read only, shortened at its end.
  void addValueRow(const QString& label, const QString& value);
  /// A control, which gets the label as its accessible name unless it has one. The explanation, if any, stands under
  /// the label.
  void addRow(const QString& label, QWidget* control, Fit fit = Fit::Keep, const QString& explanation = {});
  /// A switch at the end of its row; the form makes it.
  QCheckBox* addToggle(const QString& label, const QString& explanation = {});
  /// A row of the caller's own making, over the whole width.
  void addWidgetRow(QWidget* widget);

 private:
  class Box;

  QVBoxLayout* column_;
  Box* box_ = nullptr;
};

}  // namespace Nimbrel
