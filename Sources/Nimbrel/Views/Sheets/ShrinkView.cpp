#include "Views/Sheets/ShrinkView.h"

#include "Analysis/Cleanup.h"
#include "Store/Store.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Sheets/ShotTable.h"

#include <QHBoxLayout>

#include <cmath>

namespace Nimbrel {

namespace {

constexpr int sheetWidth = 620;
constexpr int tableHeight = 308;
constexpr int sizeWidth = 100;
constexpr int sliderWidth = 260;
constexpr int valueWidth = 34;
constexpr int valueGap = 10;

// The slider counts in steps of 0.05.
constexpr double stepsPerUnit = 20;
constexpr int lowest = 12;
constexpr int highest = 20;

}  // namespace

ShrinkView::ShrinkView(Store& store, QWidget* parent)
    : ShotSheet(tr("Shrink to HEIC"), sheetWidth, parent),
      store_(store),
      form_(new GroupedForm),
      quality_(new QSlider(Qt::Horizontal)),
      qualityText_(new QLabel),
      table_(new ShotTable(store, {{.column = ShotColumn::Name}, {.column = ShotColumn::Size, .width = sizeWidth}},
                           ShotTable::Selection::None)),
      ring_(new BusyRing) {
  setObjectName(QStringLiteral("shrinkSheet"));
  addWords(
      tr("Screenshots are stored as PNG, which is generous with space. HEIC typically reclaims 75–90% of it. Originals "
         "go to the Trash, so nothing is lost until you empty it."));
  addControls();
  addPlace(
      table_,
      new Placeholder(QStringLiteral("checkmark.circle"), tr("Nothing to Shrink"), tr("Everything is already HEIC.")),
      tableHeight);
  addButtons();
  connect(&store_, &Store::shotsChanged, this, &ShrinkView::refresh);
  connect(&store_, &Store::shrinkProgressChanged, this, &ShrinkView::showProgress);
  refresh();
}

void ShrinkView::addControls() {
  filedOnly_ = form_->addToggle(tr("Only shots filed in the library"));
  filedOnly_->setObjectName(QStringLiteral("shrink.filedOnly"));
  filedOnly_->setChecked(true);
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(valueGap);
  line->addWidget(quality_);
  line->addWidget(qualityText_);
  quality_->setObjectName(QStringLiteral("shrink.quality"));
  quality_->setAccessibleName(tr("Quality"));
  quality_->setRange(lowest, highest);
  quality_->setPageStep(1);
  quality_->setFixedWidth(sliderWidth);
  quality_->setValue(static_cast<int>(std::lround(store_.settings().heicQuality() * stepsPerUnit)));
  setTextLook(*qualityText_, TextStyle::Body);
  qualityText_->setObjectName(QStringLiteral("shrink.qualityText"));
  qualityText_->setMinimumWidth(scaled(valueWidth));
  qualityText_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  qualityText_->setText(QString::number(store_.settings().heicQuality(), 'f', 2));
  form_->addRow(tr("Quality"), row);
  addForm(form_);
  connect(filedOnly_, &QCheckBox::toggled, this, &ShrinkView::refresh);
  connect(quality_, &QSlider::valueChanged, this, &ShrinkView::setQuality);
}

void ShrinkView::addButtons() {
  footerStart()->insertWidget(0, ring_);
  footerStart()->setSpacing(Measures::step8);
  ring_->setObjectName(QStringLiteral("shrink.ring"));
  ring_->hide();
  addCancelButton(tr("Cancel"))->setObjectName(QStringLiteral("shrink.cancel"));
  shrink_ = addDefaultButton(tr("Shrink"));
  shrink_->setObjectName(QStringLiteral("shrink.confirm"));
  connect(shrink_, &QPushButton::clicked, this, &ShrinkView::shrink);
}

void ShrinkView::refresh() {
  // What is being shrunk stays listed until the end.
  if (isShrinking_) return;
  const auto scope = filedOnly_->isChecked() ? ShrinkScope::Filed : ShrinkScope::All;
  const auto candidates = shrinkCandidates(store_.shots(), scope);
  std::vector<ShotTableRow> rows;
  for (const auto& shot : candidates) rows.push_back({.shot = shot, .suggestion = {}});
  table_->setRows(std::move(rows));
  showPlaceholder(candidates.empty());
  setFooterText(countAndSize(candidates));
  shrink_->setEnabled(!candidates.empty());
}

void ShrinkView::setQuality() {
  const auto quality = quality_->value() / stepsPerUnit;
  store_.settings().heicQuality.set(quality);
  qualityText_->setText(QString::number(quality, 'f', 2));
}

void ShrinkView::shrink() {
  isShrinking_ = true;
  form_->setEnabled(false);
  shrink_->setEnabled(false);
  ring_->show();
  store_.recompressInBackground(table_->shots());
  showProgress();
}

void ShrinkView::showProgress() {
  if (!isShrinking_) return;
  const auto& progress = store_.shrinkProgress();
  if (!progress) {
    isShrinking_ = false;
    return accept();
  }
  setFooterText(tr("Shrinking %1 of %2…").arg(progress->done + 1).arg(progress->total));
}

void ShrinkView::reject() {
  if (!isShrinking_) return ShotSheet::reject();
  isShrinking_ = false;
  store_.cancelRecompress();
  ShotSheet::reject();
}

}  // namespace Nimbrel
