#include "Views/Editor/EditorHeader.h"

#include "Views/Editor/EditorTool.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace Nimbrel {

namespace {

constexpr int headerHeight = 58;

}  // namespace

EditorHeader::EditorHeader(EditorState& state, QWidget* parent)
    : QWidget(parent), state_(state), hint_(new QLabel), note_(new QLabel), busy_(new BusyRing) {
  setFixedHeight(scaled(headerHeight));
  auto* title = new QLabel(tr("Edit"));
  setTextLook(*title, TextStyle::Title3);
  hint_->setObjectName(QStringLiteral("editor.hint"));
  setTextLook(*hint_, TextStyle::Callout, Token::Secondary);
  note_->setObjectName(QStringLiteral("editor.note"));
  setTextLook(*note_, TextStyle::Caption, Token::Secondary);
  busy_->setObjectName(QStringLiteral("editor.busy"));

  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  words->addStretch();
  words->addWidget(title);
  words->addWidget(hint_);
  words->addStretch();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(Measures::dialogMargin, 0, Measures::dialogMargin, 0);
  row->setSpacing(Measures::step12);
  row->addLayout(words);
  row->addStretch();
  row->addWidget(busy_);
  row->addWidget(note_);
  connect(&state, &EditorState::toolChanged, this, &EditorHeader::refresh);
  connect(&state, &EditorState::noteChanged, this, &EditorHeader::refresh);
  refresh();
}

void EditorHeader::refresh() {
  hint_->setText(EditorTools::at(state_.tool()).hint());
  note_->setText(QString::fromStdString(state_.note()));
  note_->setVisible(!state_.note().empty());
}

}  // namespace Nimbrel
