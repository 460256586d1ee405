#include "Views/Recording/SliderRow.h"

#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>

namespace Nimbrel {

namespace {

constexpr int labelWidth = 132;
constexpr int valueWidth = 40;
constexpr int partGap = 10;

}  // namespace

SliderRow::SliderRow(const QString& label, QSlider* slider, QLabel* value, QWidget* parent) : QWidget(parent) {
  auto* title = new QLabel(label);
  setTextLook(*title, TextStyle::Body);
  title->setMinimumWidth(scaled(labelWidth));
  setTextLook(*value, TextStyle::Body, Token::Secondary);
  value->setMinimumWidth(scaled(valueWidth));
  value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  slider->setAccessibleName(label);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(partGap);
  line->addWidget(title);
  line->addWidget(slider, 1);
  line->addWidget(value);
}

}  // namespace Nimbrel
