#include "Views/Inspector/NoteSection.h"

#include "Views/Shared/Measures.h"

namespace Nimbrel {

namespace {

constexpr int rowPaddingAlong = 10;

}  // namespace

NoteSection::NoteSection(const InspectorContext& context) : ShotSection(context, tr("Note")), field_(new NoteField) {
  setObjectName(QStringLiteral("inspector.noteSection"));
  field_->setObjectName(QStringLiteral("inspector.note"));
  field_->setPlaceholderText(tr("Note"));
  field_->setAccessibleName(tr("Note"));
  auto* row = new QWidget;
  auto* column = new QVBoxLayout(row);
  column->setContentsMargins(Measures::rowPadding, rowPaddingAlong, Measures::rowPadding, rowPaddingAlong);
  column->addWidget(field_);
  addBareRow(row);
  connect(field_, &NoteField::noteEdited, this, [this] { drafts().note = field_->note().toStdString(); });
  connect(field_, &NoteField::submitted, this, &NoteSection::submit);
}

void NoteSection::fill(const Shot& /*shot*/) { field_->setNote(QString::fromStdString(drafts().note)); }

void NoteSection::submit() const {
  if (!isInCatalogue()) return;
  store().database().setNote(shot()->id, drafts().note);
  store().reload();
}

}  // namespace Nimbrel
