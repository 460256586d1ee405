#include "Views/Editor/EditorFooter.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

namespace {

constexpr int footerHeight = 56;
constexpr int ruleHeight = 20;

}  // namespace

EditorFooter::EditorFooter(EditorState& state, HoldsSecrets secrets, QWidget* parent)
    : QWidget(parent), state_(state), secrets_(secrets), counter_(new QLabel) {
  setFixedHeight(scaled(footerHeight));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(Measures::dialogMargin, 0, Measures::dialogMargin, 0);
  row->setSpacing(Measures::buttonGap);
  coverSecrets_ = addCommand(*row, "editor.coverSecrets", tr("Cover Secrets"), &EditorState::coverSensitive);
  coverSecrets_->setToolTip(tr("Black out only the blocks that look like keys, tokens or personal data"));
  coverAllText_ = addCommand(*row, "editor.coverAllText", tr("Cover All Text"), &EditorState::coverAllText);
  auto* rule = new Hairline(Qt::Vertical);
  rule->setFixedHeight(scaled(ruleHeight));
  row->addSpacing(Measures::step4);
  row->addWidget(rule);
  row->addSpacing(Measures::step4);
  undo_ = addCommand(*row, "editor.undo", tr("Undo"), &EditorState::undo);
  clear_ = addCommand(*row, "editor.clear", tr("Clear"), &EditorState::clear);
  counter_->setObjectName(QStringLiteral("editor.counter"));
  setTextLook(*counter_, TextStyle::Body, Token::Secondary);
  row->addSpacing(Measures::step6);
  row->addWidget(counter_);
  row->addStretch();
  connect(addButton(*row, "editor.cancel", tr("Cancel")), &QPushButton::clicked, this, &EditorFooter::cancelled);
  save_ = addButton(*row, "editor.save", tr("Save Copy"));
  setVariant(*save_, ButtonVariant::Default);
  connect(save_, &QPushButton::clicked, this, &EditorFooter::saveRequested);
  connect(&state, &EditorState::marksChanged, this, &EditorFooter::refresh);
  connect(&state, &EditorState::blocksChanged, this, &EditorFooter::refresh);
  refresh();
}

QPushButton* EditorFooter::addButton(QHBoxLayout& row, const char* name, const QString& title) {
  auto* button = new QPushButton(title);
  button->setObjectName(QString::fromLatin1(name));
  setVariant(*button, ButtonVariant::Plain);
  // A click leaves the focus to the canvas and its keys.
  button->setFocusPolicy(Qt::TabFocus);
  connect(button, &QPushButton::clicked, this, &EditorFooter::pressed);
  row.addWidget(button);
  return button;
}

QPushButton* EditorFooter::addCommand(QHBoxLayout& row, const char* name, const QString& title, Command command) {
  auto* button = addButton(row, name, title);
  connect(button, &QPushButton::clicked, &state_, command);
  return button;
}

void EditorFooter::setCanEdit(bool canEdit) {
  canEdit_ = canEdit;
  refresh();
}

void EditorFooter::setHasPicture(bool hasPicture) {
  hasPicture_ = hasPicture;
  refresh();
}

void EditorFooter::refresh() {
  const bool hasMarks = !state_.items().empty();
  const bool hasText = !state_.blocks().empty();
  coverSecrets_->setEnabled(canEdit_ && hasText && secrets_ == HoldsSecrets::Yes);
  coverAllText_->setEnabled(canEdit_ && hasText);
  undo_->setEnabled(canEdit_ && hasMarks);
  clear_->setEnabled(canEdit_ && hasMarks);
  save_->setEnabled(canEdit_ && hasMarks && hasPicture_);
  counter_->setText(QString::fromStdString(markCount(state_.items().size())));
}

}  // namespace Nimbrel
