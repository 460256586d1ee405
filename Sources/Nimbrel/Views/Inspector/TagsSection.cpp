#include "Views/Inspector/TagsSection.h"

#include "Views/Shared/Measures.h"

namespace Nimbrel {

namespace {

constexpr int rowPaddingAlong = 10;
constexpr int chipsGap = 9;

}  // namespace

TagsSection::TagsSection(const InspectorContext& context)
    : ShotSection(context, tr("Tags")), field_(new QLineEdit), chips_(new TagChips) {
  setObjectName(QStringLiteral("inspector.tags"));
  field_->setObjectName(QStringLiteral("inspector.newTag"));
  field_->setPlaceholderText(tr("Add tag"));
  field_->setAccessibleName(tr("Add tag"));
  auto* row = new QWidget;
  auto* column = new QVBoxLayout(row);
  column->setContentsMargins(Measures::rowPadding, rowPaddingAlong, Measures::rowPadding, rowPaddingAlong);
  column->setSpacing(chipsGap);
  column->addWidget(field_);
  column->addWidget(chips_);
  chips_->hide();
  addBareRow(row);
  connect(field_, &QLineEdit::textEdited, this, [this](const QString& text) { drafts().newTag = text; });
  connect(field_, &QLineEdit::returnPressed, this, &TagsSection::addTag);
  connect(chips_, &TagChips::removeRequested, this,
          [this](const std::string& tag) { store().removeTag(tag, {shot()}); });
}

void TagsSection::fill(const Shot& shot) {
  setFieldText(*field_, drafts().newTag);
  chips_->setTags(shot.tags);
}

void TagsSection::addTag() {
  const auto tag = drafts().newTag.toStdString();
  // First, since adding it shows the shot anew.
  drafts().newTag.clear();
  store().addTag(tag, {shot()});
  field_->clear();
}

}  // namespace Nimbrel
