#include "Views/Recording/SliderRow.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>

namespace Nimbrel {

namespace {

constexpr int labelWidth = 132;
constexpr int valueWidth = 40;
constexpr int partGap = 10;
/// Above and below, where a slider has room of its own for its focus ring.
constexpr int paddingAlong = 4;

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
  line->setContentsMargins(Measures::rowPadding, paddingAlong, Measures::rowPadding, paddingAlong);
  line->setSpacing(partGap);
  line->addStrut(scaled(Measures::formRowHeight) - 2 * paddingAlong);
  line->addWidget(title);
  line->addWidget(slider, 1);
  line->addWidget(value);
}

}  // namespace Nimbrel
