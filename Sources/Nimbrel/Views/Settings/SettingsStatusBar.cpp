#include "Views/Settings/SettingsStatusBar.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace Nimbrel {

SettingsStatusBar::SettingsStatusBar(Store& store, QWidget* parent)
    : QWidget(parent), store_(store), remaining_(new QLabel) {
  setObjectName(QStringLiteral("settings.statusBar"));
  remaining_->setObjectName(QStringLiteral("settings.remaining"));
  setTextLook(*remaining_, TextStyle::Caption, Token::Secondary);
  auto* rescan = new QPushButton(tr("Rescan Now"));
  rescan->setObjectName(QStringLiteral("settings.rescan"));
  setVariant(*rescan, ButtonVariant::Plain);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(Measures::formMargin, Measures::formMargin, Measures::formMargin, Measures::formMargin);
  line->setSpacing(Measures::buttonGap);
  line->addWidget(rescan);
  line->addStretch();
  line->addWidget(remaining_);
  connect(rescan, &QPushButton::clicked, this, [this] { store_.scan(); });
  connect(&store_, &Store::ocrRemainingChanged, this, &SettingsStatusBar::showRemaining);
  showRemaining();
}

void SettingsStatusBar::showRemaining() {
  const auto remaining = store_.ocrRemaining();
  remaining_->setText(tr("Reading text… %1 left").arg(remaining));
  remaining_->setVisible(remaining > 0);
}

}  // namespace Nimbrel
