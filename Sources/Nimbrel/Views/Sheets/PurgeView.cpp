#include "Views/Sheets/PurgeView.h"

#include "Analysis/Cleanup.h"
#include "Store/Store.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Sheets/ShotTable.h"

namespace Nimbrel {

namespace {

constexpr int sheetWidth = 620;
constexpr int tableHeight = 262;
constexpr int takenWidth = 202;
constexpr int sizeWidth = 90;
constexpr int pickerWidth = 130;
constexpr int defaultDays = 90;

}  // namespace

PurgeView::PurgeView(Store& store, QWidget* parent)
    : ShotSheet(tr("Purge Old Shots"), sheetWidth, parent),
      store_(store),
      days_(new QComboBox),
      table_(new ShotTable(store,
                           {{.column = ShotColumn::Name},
                            {.column = ShotColumn::Taken, .width = takenWidth},
                            {.column = ShotColumn::Size, .width = sizeWidth}},
                           ShotTable::Selection::None)),
      placeholder_(new Placeholder(QStringLiteral("checkmark.circle"), tr("Nothing to Purge"), {})) {
  setObjectName(QStringLiteral("purgeSheet"));
  addControls();
  addNote(tr("Favorites are always kept. Files go to the Trash, so you can put them back."));
  addPlace(table_, placeholder_, tableHeight);
  addButtons();
  connect(&store_, &Store::shotsChanged, this, &PurgeView::refresh);
  refresh();
}

void PurgeView::addControls() {
  days_->setObjectName(QStringLiteral("purge.days"));
  days_->addItem(tr("30 days"), 30);
  days_->addItem(tr("90 days"), defaultDays);
  days_->addItem(tr("6 months"), 180);
  days_->addItem(tr("1 year"), 365);
  days_->setCurrentIndex(days_->findData(defaultDays));
  days_->setMinimumWidth(scaled(pickerWidth));
  auto* form = new GroupedForm;
  form->addRow(tr("Older than"), days_);
  inboxOnly_ = form->addToggle(tr("Only unfiled shots in the Inbox"));
  inboxOnly_->setObjectName(QStringLiteral("purge.inboxOnly"));
  addForm(form);
  connect(days_, &QComboBox::currentIndexChanged, this, &PurgeView::refresh);
  connect(inboxOnly_, &QCheckBox::toggled, this, &PurgeView::refresh);
}

void PurgeView::addButtons() {
  addCancelButton(tr("Cancel"))->setObjectName(QStringLiteral("purge.cancel"));
  purge_ = addDefaultButton(tr("Move to Trash"));
  purge_->setObjectName(QStringLiteral("purge.confirm"));
  connect(purge_, &QPushButton::clicked, this, &PurgeView::purge);
}

int PurgeView::days() const { return days_->currentData().toInt(); }

void PurgeView::refresh() {
  const auto scope = inboxOnly_->isChecked() ? PurgeScope::Inbox : PurgeScope::All;
  const auto matches = purgeMatches(store_.shots(), days(), scope, store_.now());
  std::vector<ShotTableRow> rows;
  for (const auto& shot : matches) rows.push_back({.shot = shot, .suggestion = {}});
  table_->setRows(std::move(rows));
  placeholder_->setContent(QStringLiteral("checkmark.circle"), tr("Nothing to Purge"),
                           tr("No shots older than %1 days.").arg(days()));
  showPlaceholder(matches.empty());
  setFooterText(countAndSize(matches));
  purge_->setEnabled(!matches.empty());
}

void PurgeView::purge() {
  store_.trash(table_->shots());
  accept();
}

}  // namespace Nimbrel
