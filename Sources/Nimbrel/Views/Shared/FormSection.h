#pragma once

#include "Views/Shared/ElidedLabel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// A titled box of a grouped form: rows parted by rules, each with a label left and what belongs to it right, the other
/// way round in scripts from right to left. Hidden, it leaves no gap. It owns what is added.
class FormSection : public QWidget {
  Q_OBJECT

 public:
  /// Whether a control keeps its size at the end of its row, or fills the rest of it as fields and pickers do.
  enum class Fit { Keep, Fill };

  /// Without a title there is none above the box.
  explicit FormSection(const QString& title = {}, QWidget* parent = nullptr);

  /// What stands at the end of the title's line.
  void setAccessory(QWidget* widget);

  /// A control, which gets the label as its accessible name unless it has one. The explanation, if any, stands under
  /// the label.
  void addRow(const QString& label, QWidget* control, Fit fit = Fit::Keep, const QString& explanation = {});
  /// A value that is read only, shortened at its end.
  ElidedLabel* addValueRow(const QString& label, const QString& value = {});
  /// A switch at the end of its row; the section makes it.
  QCheckBox* addToggle(const QString& label, const QString& explanation = {});
  /// A row of the caller's own making, over the whole width, inside the usual padding.
  void addWidgetRow(QWidget* widget);
  /// The same with room around it that is the row's own affair.
  void addBareRow(QWidget* widget);
  /// The same among the rows that there are, as the one of that number from the top, counted from 0.
  void insertWidgetRow(int index, QWidget* widget);
  void insertBareRow(int index, QWidget* widget);
  /// Takes that one out. It is deleted in a later turn, since it may be what asked for it.
  void removeRow(int index);
  /// Takes all rows out. They are deleted in a later turn, since one of them may be what asked for it.
  void clear();

 private:
  class Box;

  QVBoxLayout* column_;
  QHBoxLayout* heading_ = nullptr;
  Box* box_;
};

}  // namespace Nimbrel
