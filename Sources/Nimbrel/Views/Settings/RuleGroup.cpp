#include "Views/Settings/RuleGroup.h"

#include "Views/Settings/ProjectPicker.h"
#include "Views/Settings/SettingsPane.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/FieldText.h"
#include "Views/Shared/LeadingText.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include <limits>

namespace Nimbrel {

namespace {

constexpr int openerSymbol = 13;
constexpr int rowPaddingAlong = 5;
constexpr int contentIndent = 24;
constexpr int pickerWidth = 170;

QString nameOf(const QString& part) { return QStringLiteral("settings.rule.") + part; }

}  // namespace

RuleGroup::RuleGroup(QWidget* parent)
    : QWidget(parent),
      opener_(new SymbolButton(QStringLiteral("chevron.right"), openerSymbol)),
      name_(new QLineEdit),
      rows_(new QVBoxLayout(this)) {
  setObjectName(QStringLiteral("settings.rule"));
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(0);
  addHeader();
  setOpen(false);
}

void RuleGroup::addHeader() {
  opener_->setObjectName(nameOf(QStringLiteral("opener")));
  opener_->setCheckable(true);
  connect(opener_, &QAbstractButton::toggled, this, &RuleGroup::setOpen);
  auto* enabled = new QCheckBox;
  enabled->setObjectName(nameOf(QStringLiteral("enabled")));
  enabled->setAccessibleName(tr("Enabled"));
  follow(*enabled, &AutomationRule::enabled);
  name_->setObjectName(nameOf(QStringLiteral("name")));
  name_->setFrame(false);
  name_->setFixedHeight(scaled(Measures::formFieldHeight));
  name_->setPlaceholderText(tr("Rule name"));
  name_->setAccessibleName(tr("Rule name"));
  follow(*name_, &AutomationRule::name);
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(Measures::rowPadding, rowPaddingAlong, Measures::rowPadding, rowPaddingAlong);
  line->setSpacing(Measures::step8);
  line->addWidget(opener_);
  line->addWidget(enabled);
  line->addWidget(name_, 1);
  rows_->addWidget(row);
}

void RuleGroup::addContent() {
  addField(tr("Text contains"), QStringLiteral("containsText"), &AutomationRule::containsText);
  addField(tr("Application"), QStringLiteral("source"), &AutomationRule::source);
  addField(tr("Add tag"), QStringLiteral("tag"), &AutomationRule::tag);
  addPicker();
  addToggle(tr("Favorite"), QStringLiteral("favorite"), &AutomationRule::favorite);
  addToggle(tr("File to Library"), QStringLiteral("fileToLibrary"), &AutomationRule::fileToLibrary);
  addRemoveButton();
  for (const auto& show : shows_) show();
  Q_EMIT contentAdded();
}

void RuleGroup::addRow(QWidget* content) {
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(Measures::rowPadding + contentIndent, rowPaddingAlong, Measures::rowPadding,
                           rowPaddingAlong);
  line->addStrut(scaled(Measures::formRowHeight) - 2 * rowPaddingAlong);
  line->addWidget(content);
  rows_->addWidget(row);
  content_.push_back(row);
}

void RuleGroup::addField(const QString& label, const QString& name, std::string AutomationRule::*text) {
  auto* field = new QLineEdit;
  field->setObjectName(nameOf(name));
  field->setFixedHeight(scaled(Measures::formFieldHeight));
  follow(*field, text);
  addRow(labelledRow(label, field, FormSection::Fit::Fill, contentIndent));
}

void RuleGroup::addPicker() {
  auto* picker = new ProjectPicker;
  picker->setObjectName(nameOf(QStringLiteral("project")));
  picker->setMinimumWidth(scaled(pickerWidth));
  shows_.emplace_back([this, picker] { picker->setChoice(projects_, rule_.project); });
  connect(picker, &ProjectPicker::projectChosen, this, [this](const std::string& project) {
    rule_.project = project;
    Q_EMIT edited(rule_);
  });
  addRow(labelledRow(tr("Project"), picker, FormSection::Fit::Keep, contentIndent));
}

void RuleGroup::addToggle(const QString& label, const QString& name, bool AutomationRule::*state) {
  auto* toggle = new QCheckBox;
  toggle->setObjectName(nameOf(name));
  toggle->setAccessibleName(label);
  follow(*toggle, state);
  auto* words = new QLabel(label);
  setTextLook(*words, TextStyle::Body);
  alignToLayout(*words);
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(words, 1);
  line->addWidget(toggle);
  addRow(row);
}

void RuleGroup::addRemoveButton() {
  auto* remove = settingsButton(tr("Remove Rule"), QStringLiteral("rule.remove"));
  setVariant(*remove, ButtonVariant::Destructive);
  connect(remove, &QPushButton::clicked, this, &RuleGroup::removeClicked);
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(remove);
  line->addStretch();
  addRow(row);
}

void RuleGroup::follow(QLineEdit& field, std::string AutomationRule::*text) {
  // A field that cuts would take away what another wrote into the rule.
  field.setMaxLength(std::numeric_limits<int>::max());
  shows_.emplace_back([this, &field, text] { setFieldText(field, QString::fromStdString(rule_.*text)); });
  connect(&field, &QLineEdit::textEdited, this, [this, text](const QString& written) {
    rule_.*text = written.toStdString();
    Q_EMIT edited(rule_);
  });
}

void RuleGroup::follow(QCheckBox& toggle, bool AutomationRule::*state) {
  shows_.emplace_back([this, &toggle, state] { toggle.setChecked(rule_.*state); });
  connect(&toggle, &QCheckBox::toggled, this, [this, state](bool isOn) {
    if (rule_.*state == isOn) return;
    rule_.*state = isOn;
    Q_EMIT edited(rule_);
  });
}

void RuleGroup::setRule(const AutomationRule& rule, const std::vector<std::string>& projects) {
  rule_ = rule;
  projects_ = projects;
  // Its fields are called as those of all other rules are.
  setAccessibleName(QString::fromStdString(rule.name));
  for (const auto& show : shows_) show();
}

void RuleGroup::setOpen(bool isOpen) {
  if (isOpen && content_.empty()) addContent();
  opener_->setChecked(isOpen);
  opener_->setSymbol(isOpen ? QStringLiteral("chevron.down") : QStringLiteral("chevron.right"));
  opener_->setFollowsScript(!isOpen);
  opener_->setTitle(isOpen ? tr("Hide Rule") : tr("Show Rule"));
  for (auto* row : content_) row->setVisible(isOpen);
}

void RuleGroup::editName() {
  // A later turn, in which a new group is seen.
  const auto begin = [name = name_] {
    name->setFocus(Qt::OtherFocusReason);
    name->selectAll();
  };
  QMetaObject::invokeMethod(name_, begin, Qt::QueuedConnection);
}

void RuleGroup::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  for (const auto* row : content_) {
    if (row->isHidden()) continue;
    const QRect line(Measures::rowPadding, row->y(), width() - Measures::rowPadding, 1);
    Painting::horizontalRule(painter, QStyle::visualRect(layoutDirection(), rect(), line),
                             themeColor(Token::Separator));
  }
}

}  // namespace Nimbrel
