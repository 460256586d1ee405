#pragma once

#include "Views/Shared/FormSection.h"

#include <QCheckBox>
#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// A form of titled boxes, one below the other. Rows grow with their text. The form owns what is added.
class GroupedForm final : public QWidget {
  Q_OBJECT

 public:
  using Fit = FormSection::Fit;

  explicit GroupedForm(QWidget* parent = nullptr);

  /// Begins a box; rows go into the last one. Without a title there is none above it.
  void addSection(const QString& title);
  /// The same with a section of the caller's own making.
  void add(FormSection* section);
  /// What FormSection says of these.
  void addValueRow(const QString& label, const QString& value);
  void addRow(const QString& label, QWidget* control, Fit fit = Fit::Keep, const QString& explanation = {});
  QCheckBox* addToggle(const QString& label, const QString& explanation = {});
  void addWidgetRow(QWidget* widget);

 private:
  [[nodiscard]] FormSection& section();

  QVBoxLayout* column_;
  FormSection* section_ = nullptr;
};

}  // namespace Nimbrel
