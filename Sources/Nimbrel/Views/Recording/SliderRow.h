#pragma once

#include <QLabel>
#include <QSlider>
#include <QWidget>

namespace Nimbrel {

/// A row of a form (FormSection::addBareRow) with a slider between what it sets and its value. It owns both, and the
/// slider gets the label as its accessible name.
class SliderRow final : public QWidget {
  Q_OBJECT

 public:
  SliderRow(const QString& label, QSlider* slider, QLabel* value, QWidget* parent = nullptr);
};

}  // namespace Nimbrel
