#include "Views/Inspector/WarningSection.h"

#include "Views/Inspector/ShotDetails.h"
#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

namespace {

constexpr int rowPaddingAlong = 10;
constexpr int shieldSize = 18;

}  // namespace

WarningSection::WarningSection(const InspectorContext& context)
    : ShotSection(context, {}), labels_(new QLabel), edit_(new QPushButton(tr("Edit…"))) {
  setObjectName(QStringLiteral("inspector.warning"));
  labels_->setObjectName(QStringLiteral("inspector.warningLabels"));
  edit_->setObjectName(QStringLiteral("inspector.warningEdit"));
  setTextLook(*labels_, TextStyle::Callout);
  labels_->setWordWrap(true);
  labels_->setMinimumHeight(lineHeight(TextStyle::Callout));
  auto* advice = new QLabel(tr("Check before sharing this one."));
  setTextLook(*advice, TextStyle::Caption, Token::Secondary);
  advice->setWordWrap(true);
  advice->setMinimumHeight(lineHeight(TextStyle::Caption));
  setVariant(*edit_, ButtonVariant::Plain);
  setButtonSize(*edit_, ButtonSize::Small);
  connect(edit_, &QPushButton::clicked, this, &WarningSection::editClicked);

  auto* words = new QVBoxLayout;
  words->setSpacing(Measures::step2);
  words->addWidget(labels_);
  words->addWidget(advice);
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(Measures::rowPadding, rowPaddingAlong, Measures::rowPadding, rowPaddingAlong);
  line->setSpacing(Measures::step8);
  line->addWidget(new SymbolView(QStringLiteral("exclamationmark.shield"), scaled(shieldSize), Token::Secondary), 0,
                  Qt::AlignTop);
  line->addLayout(words, 1);
  line->addWidget(edit_, 0, Qt::AlignTop);
  addBareRow(row);
}

void WarningSection::fill(const Shot& shot) {
  labels_->setText(QString::fromStdString(sensitiveWarning(shot)));
  setVisible(!shot.sensitive.empty());
}

}  // namespace Nimbrel
