#include "Views/Editor/EditorToolbar.h"

#include "Views/Editor/EditorTool.h"
#include "Views/Editor/InkSwatch.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int barHeight = 60;
constexpr int toolsWidth = 390;
constexpr int labelWidth = 150;

}  // namespace

EditorToolbar::EditorToolbar(EditorState& state, QWidget* parent)
    : QWidget(parent), state_(state), tools_(new SegmentedControl), label_(new QLineEdit) {
  setFixedHeight(scaled(barHeight));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(Measures::dialogMargin, 0, Measures::dialogMargin, 0);
  row->setSpacing(Measures::step16);
  addTools(*row);
  addLabelField(*row);
  row->addStretch();
  addInks(*row);
  connect(&state, &EditorState::toolChanged, this, &EditorToolbar::refresh);
  refresh();
}

void EditorToolbar::addTools(QHBoxLayout& row) {
  tools_->setObjectName(QStringLiteral("editor.tools"));
  tools_->setAccessibleName(tr("Tool"));
  for (const auto* tool : EditorTools::all()) {
    tools_->addSegment(tool->symbol(), tool->title());
    auto* segment = tools_->segment(tools_->count() - 1);
    segment->setObjectName(QStringLiteral("editor.tool.") + tool->title());
    // A click leaves the focus to the canvas and its keys.
    segment->setFocusPolicy(Qt::TabFocus);
  }
  tools_->setFixedWidth(std::max(scaled(toolsWidth), tools_->minimumSizeHint().width()));
  connect(tools_, &SegmentedControl::chosenChanged, &state_, &EditorState::setTool);
  row.addWidget(tools_);
}

void EditorToolbar::addLabelField(QHBoxLayout& row) {
  label_->setObjectName(QStringLiteral("editor.labelText"));
  label_->setAccessibleName(tr("Label"));
  label_->setPlaceholderText(tr("Label"));
  label_->setText(QString::fromStdString(state_.labelText()));
  label_->setFixedWidth(scaled(labelWidth));
  // So that a sheet that large text makes wider does not change its width with the tool.
  auto policy = label_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  label_->setSizePolicy(policy);
  connect(label_, &QLineEdit::textChanged, &state_,
          [this](const QString& text) { state_.setLabelText(text.toStdString()); });
  row.addWidget(label_);
}

void EditorToolbar::addInks(QHBoxLayout& row) {
  auto* inks = new QHBoxLayout;
  inks->setSpacing(Measures::step6);
  // A parent of their own, by which they know which of them exclude each other.
  auto* group = new QWidget;
  group->setLayout(inks);
  group->setAccessibleName(tr("Ink"));
  inks->setContentsMargins(0, 0, 0, 0);
  for (int index = 0; index < static_cast<int>(InkColor::all().size()); ++index) {
    auto* swatch = new InkSwatch(index, group);
    swatch->setChecked(index == state_.colorIndex());
    connect(swatch, &QRadioButton::toggled, &state_, [this, index](bool isChosen) {
      if (isChosen) state_.setColorIndex(index);
    });
    inks->addWidget(swatch);
  }
  row.addWidget(group);
}

void EditorToolbar::refresh() { label_->setVisible(EditorTools::at(state_.tool()).kind() == Annotation::Kind::label); }

}  // namespace Nimbrel
