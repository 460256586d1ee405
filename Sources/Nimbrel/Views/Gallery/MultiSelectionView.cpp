#include "Views/Gallery/MultiSelectionView.h"

#include "Foundation/Formats.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Shared/Symbols.h"

#include <algorithm>
#include <cstdint>

namespace Nimbrel {

namespace {

// Beside the padding of rows.
constexpr int buttonRoom = 3;
constexpr int fieldRoom = 5;

ElidedLabel* valueLabel(const QString& objectName) {
  auto* label = new ElidedLabel(TextStyle::Body, Token::Secondary);
  label->setObjectName(objectName);
  label->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
  return label;
}

QPushButton* actionButton(const QString& title, const QString& objectName) {
  auto* button = new QPushButton(title);
  button->setObjectName(objectName);
  return button;
}

/// What a form's row has around a control, beside its usual padding.
QWidget* padded(QWidget* control, int above, int below) {
  auto* row = new QWidget;
  auto* column = new QVBoxLayout(row);
  column->setContentsMargins(0, above, 0, below);
  column->addWidget(control);
  return row;
}

bool anyUnfiled(const ShotList& shots) {
  return std::ranges::any_of(shots, [](const ShotPtr& shot) { return !shot->filed; });
}

}  // namespace

MultiSelectionView::MultiSelectionView(Store& store, QWidget* parent)
    : QWidget(parent), store_(store), column_(new QVBoxLayout(this)) {
  setObjectName(QStringLiteral("multiSelection"));
  column_->setContentsMargins(0, 0, 0, 0);
  build();
  for (const auto fact : {&Store::selectionChanged, &Store::shotsChanged, &Store::filterChanged,
                          &Store::searchResultChanged, &Store::derivedChanged}) {
    connect(&store_, fact, this, &MultiSelectionView::refresh);
  }
}

void MultiSelectionView::build() {
  const auto typed = tag_ != nullptr ? tag_->text() : QString();
  // Later, as it may be one of its buttons that asks for it.
  if (form_ != nullptr) {
    form_->hide();
    form_->deleteLater();
  }
  canFile_ = anyUnfiled(store_.selectedShots());
  form_ = new GroupedForm(this);
  count_ = valueLabel(QStringLiteral("multiSelection.count"));
  size_ = valueLabel(QStringLiteral("multiSelection.size"));
  form_->addSection({});
  form_->addRow(QStringLiteral("Selected"), count_, GroupedForm::Fit::Fill);
  form_->addRow(QStringLiteral("Size"), size_, GroupedForm::Fit::Fill);
  if (canFile_) {
    auto* file = actionButton(QStringLiteral("File to Library"), QStringLiteral("multiSelection.file"));
    file->setIcon(Symbols::icon(QStringLiteral("tray.and.arrow.down"), {.normal = Token::Text}));
    connect(file, &QPushButton::clicked, this, [this] { store_.file(store_.selectedShots()); });
    form_->addWidgetRow(padded(file, buttonRoom, buttonRoom));
  }
  form_->addSection(QStringLiteral("Tag All"));
  tag_ = new QLineEdit(typed);
  tag_->setObjectName(QStringLiteral("multiSelection.tag"));
  tag_->setPlaceholderText(QStringLiteral("New tag"));
  tag_->setAccessibleName(QStringLiteral("New tag"));
  connect(tag_, &QLineEdit::returnPressed, this, [this] {
    const auto text = tag_->text().toStdString();
    tag_->clear();
    store_.addTag(text, store_.selectedShots());
  });
  form_->addWidgetRow(padded(tag_, fieldRoom, fieldRoom));
  addActions(*form_);
  column_->addWidget(form_);
  refresh();
}

void MultiSelectionView::addActions(GroupedForm& form) {
  auto* forget = actionButton(QStringLiteral("Remove from Catalogue"), QStringLiteral("multiSelection.forget"));
  auto* trash = actionButton(QStringLiteral("Move to Trash"), QStringLiteral("multiSelection.trash"));
  setVariant(*trash, ButtonVariant::Destructive);
  trash->setIcon(Symbols::icon(QStringLiteral("trash"), {.normal = Token::Danger}));
  connect(forget, &QPushButton::clicked, this, [this] { store_.forget(store_.selectedShots()); });
  connect(trash, &QPushButton::clicked, this, [this] { store_.trash(store_.selectedShots()); });
  auto* buttons = new QWidget;
  auto* column = new QVBoxLayout(buttons);
  column->setContentsMargins(0, buttonRoom, 0, fieldRoom);
  column->setSpacing(Measures::step8);
  column->addWidget(forget);
  column->addWidget(trash);
  form.addSection({});
  form.addWidgetRow(buttons);
}

void MultiSelectionView::refresh() {
  // Seen only while several are selected; to look costs a pass over all that is shown.
  if (store_.selection().size() < 2) return;
  const auto shots = store_.selectedShots();
  if (anyUnfiled(shots) != canFile_) return build();
  count_->setFullText(QString::number(shots.size()) + QStringLiteral(" shots"));
  size_->setFullText(QString::fromStdString(Formats::byteCount(totalBytes(shots))));
}

}  // namespace Nimbrel
