#include "Views/Settings/ProjectsPane.h"

#include "Foundation/NameOrder.h"
#include "Foundation/Text.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"

#include <QHBoxLayout>

#include <algorithm>
#include <string>
#include <utility>

namespace Nimbrel {

namespace {

std::string nameIn(const QLineEdit& field) {
  return std::string(Text::trimmedWithLineBreaks(field.text().toStdString()));
}

}  // namespace

ProjectsPane::ProjectsPane(Store& store)
    : SettingsPane(store, tr("Projects"), QStringLiteral("projects")),
      projects_(new EntryRows(*this, {.symbol = QStringLiteral("folder.badge.gearshape"), .elide = Qt::ElideRight})),
      field_(new QLineEdit),
      add_(new QPushButton(tr("Add"))) {
  addFieldRow();
  const auto judge = [this] { add_->setDisabled(nameIn(*field_).empty()); };
  judge();
  connect(field_, &QLineEdit::textChanged, this, judge);
  connect(field_, &QLineEdit::returnPressed, add_, &QAbstractButton::click);
  connect(add_, &QPushButton::clicked, this, &ProjectsPane::add);
  connect(projects_, &EntryRows::removeClicked, this, &ProjectsPane::remove);
  connect(projects_, &EntryRows::changed, this, &ProjectsPane::rowsChanged);
  follow(settings().projects, [this] { projects_->setEntries(settings().projects()); });
}

void ProjectsPane::addFieldRow() {
  field_->setObjectName(QStringLiteral("settings.newProject"));
  field_->setPlaceholderText(tr("New project"));
  field_->setAccessibleName(tr("New project"));
  add_->setObjectName(QStringLiteral("settings.addProject"));
  setVariant(*add_, ButtonVariant::Plain);
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, Measures::step2, 0, Measures::step2);
  line->setSpacing(Measures::buttonGap);
  line->addWidget(field_, 1);
  line->addWidget(add_);
  addWidgetRow(row);
}

void ProjectsPane::add() {
  auto name = nameIn(*field_);
  field_->clear();
  auto projects = settings().projects();
  if (std::ranges::find(projects, name) != projects.end()) return;
  projects.push_back(std::move(name));
  std::ranges::stable_sort(projects,
                           [](const auto& one, const auto& other) { return NameOrder::compare(one, other) < 0; });
  settings().projects.set(std::move(projects));
}

void ProjectsPane::remove(std::size_t index) {
  auto projects = settings().projects();
  if (index >= projects.size()) return;
  projects.erase(projects.begin() + static_cast<std::ptrdiff_t>(index));
  settings().projects.set(std::move(projects));
}

}  // namespace Nimbrel
