#include "Views/Settings/FolderRow.h"

#include "Views/Settings/SettingsPane.h"
#include "Views/Shared/LeadingText.h"
#include "Views/Shared/ShotWords.h"

#include <QHBoxLayout>

namespace Nimbrel {

namespace {

constexpr int gap = 10;

}  // namespace

FolderRow::FolderRow(const QString& name, const QString& purpose, QWidget* parent)
    : QWidget(parent), path_(new ElidedLabel(TextStyle::Body, Token::Secondary, Qt::ElideMiddle)) {
  path_->setObjectName(QStringLiteral("settings.%1Path").arg(name));
  alignToLayout(*path_, Qt::AlignRight | Qt::AlignVCenter);
  auto* choose = settingsButton(tr("Choose…"), name + QStringLiteral("Choose"));
  choose->setAccessibleDescription(purpose);
  connect(choose, &QPushButton::clicked, this, &FolderRow::chooseClicked);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(gap);
  line->addWidget(path_, 1);
  line->addWidget(choose);
}

void FolderRow::setPath(std::string_view path) { path_->setFullText(shownText(path)); }

}  // namespace Nimbrel
