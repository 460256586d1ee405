#include "Views/Settings/SettingsPane.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/LeadingText.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Sheets/WrappedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace Nimbrel {

namespace {

constexpr int labelWidth = 136;
constexpr int labelGap = 10;

}  // namespace

SettingsPane::SettingsPane(Store& store, const QString& title, const QString& name)
    : FormSection(title), store_(store) {
  setObjectName(QStringLiteral("settings.") + name);
}

void SettingsPane::follow(const AnyPreference& setting, Act show) {
  show();
  connect(&settings(), &Settings::changed, this, [key = setting.key(), show = std::move(show)](const QString& changed) {
    if (changed == key) show();
  });
}

QCheckBox* SettingsPane::addSwitch(const QString& label, Preference<bool>& setting, const QString& explanation,
                                   Act then) {
  auto* toggle = addToggle(label, explanation);
  toggle->setObjectName(QStringLiteral("settings.") + setting.key());
  follow(setting, [toggle, &setting] { toggle->setChecked(setting()); });
  connect(toggle, &QCheckBox::toggled, this, [&setting, then = std::move(then)](bool isOn) {
    if (setting() == isOn) return;
    setting.set(isOn);
    if (then) then();
  });
  return toggle;
}

void SettingsPane::addNotes(const QStringList& texts) {
  auto* row = new QWidget;
  auto* column = new QVBoxLayout(row);
  column->setContentsMargins(Measures::rowPadding, Measures::step8, Measures::rowPadding, Measures::step8);
  column->setSpacing(Measures::step4);
  for (const auto& text : texts) column->addWidget(new WrappedText(text, TextStyle::Caption, Token::Secondary));
  addBareRow(row);
}

void SettingsPane::addControls(std::initializer_list<QWidget*> controls) {
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, Measures::step2, 0, Measures::step2);
  line->setSpacing(Measures::buttonGap);
  for (auto* control : controls) line->addWidget(control);
  line->addStretch();
  addWidgetRow(row);
}

QPushButton* settingsButton(const QString& title, const QString& name) {
  auto* button = new QPushButton(title);
  button->setObjectName(QStringLiteral("settings.") + name);
  setVariant(*button, ButtonVariant::Plain);
  setButtonSize(*button, ButtonSize::Small);
  return button;
}

QWidget* labelledRow(const QString& label, QWidget* control, FormSection::Fit fit, int indent) {
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(labelGap);
  auto* words = new QLabel(label);
  setTextLook(*words, TextStyle::Body);
  alignToLayout(*words);
  words->setMinimumWidth(scaled(labelWidth) - indent);
  words->setBuddy(control);
  control->setAccessibleName(label);
  line->addWidget(words);
  const bool fills = fit == FormSection::Fit::Fill;
  line->addWidget(control, fills ? 1 : 0);
  if (!fills) line->addStretch(1);
  return row;
}

}  // namespace Nimbrel
