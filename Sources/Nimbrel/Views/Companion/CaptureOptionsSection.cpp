#include "Views/Companion/CaptureOptionsSection.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QLabel>
#include <QVBoxLayout>

namespace Nimbrel {

namespace {

constexpr int verticalPadding = 9;
constexpr int lineSpacing = 7;

}  // namespace

CaptureOptionsSection::CaptureOptionsSection(Settings& settings, QWidget* parent)
    : QWidget(parent), settings_(settings) {
  auto* title = new QLabel(tr("Capture Options"));
  setTextLook(*title, TextStyle::CaptionTitle, Token::Secondary);
  title->setMinimumHeight(lineHeight(TextStyle::CaptionTitle));
  auto* row = new QHBoxLayout;
  row->setSpacing(Measures::step12);
  destination_ = addPicker(*row, tr("Save to"), QStringLiteral("panel.destination"));
  destination_->addItem(tr("Inbox"), static_cast<int>(CaptureDestination::inbox));
  destination_->addItem(tr("Library"), static_cast<int>(CaptureDestination::library));
  delay_ = addPicker(*row, tr("Delay"), QStringLiteral("panel.delay"));
  delay_->addItem(tr("None"), 0);
  delay_->addItem(tr("3 sec"), 3);
  delay_->addItem(tr("10 sec"), 10);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(Measures::rowPadding, verticalPadding, Measures::rowPadding, verticalPadding);
  column->setSpacing(lineSpacing);
  column->addWidget(title);
  column->addLayout(row);
  // Activated, and not changed: only what the user does is stored.
  connect(destination_, &QComboBox::activated, this, [this] {
    settings_.captureDestination.set(static_cast<CaptureDestination>(destination_->currentData().toInt()));
  });
  connect(delay_, &QComboBox::activated, this, [this] { settings_.captureDelay.set(delay_->currentData().toInt()); });
  connect(&settings, &Settings::changed, this, &CaptureOptionsSection::refresh);
  refresh();
}

QComboBox* CaptureOptionsSection::addPicker(QHBoxLayout& row, const QString& title, const QString& name) {
  auto* label = new QLabel(title);
  setTextLook(*label, TextStyle::Callout);
  auto* picker = new QComboBox;
  picker->setObjectName(name);
  picker->setAccessibleName(title);
  picker->setFont(textFont(TextStyle::Callout));
  picker->setFixedHeight(scaled(Measures::smallButtonHeight));
  label->setBuddy(picker);
  auto* pair = new QHBoxLayout;
  pair->setSpacing(Measures::step8);
  pair->addWidget(label);
  pair->addWidget(picker, 1);
  row.addLayout(pair, 1);
  return picker;
}

void CaptureOptionsSection::refresh() {
  destination_->setCurrentIndex(destination_->findData(static_cast<int>(settings_.captureDestination())));
  delay_->setCurrentIndex(delay_->findData(settings_.captureDelay()));
}

}  // namespace Nimbrel
