#pragma once

#include "Model/ProductivityModels.h"
#include "Views/Settings/SymbolButton.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

/// A rule as rows of a form: its name with a toggle, and below it, while it is open, what it asks for and does. These
/// rows are made when it first opens, since there may be many rules. Each edit is told as it is made.
class RuleGroup final : public QWidget {
  Q_OBJECT

 public:
  explicit RuleGroup(QWidget* parent = nullptr);

  /// What it shows; fields that show it already keep their cursor.
  void setRule(const AutomationRule& rule, const std::vector<std::string>& projects);
  [[nodiscard]] const AutomationRule& rule() const { return rule_; }
  void setOpen(bool isOpen);
  /// Has the name written anew.
  void editName();

 Q_SIGNALS:
  /// The user has made this of the rule.
  void edited(const Nimbrel::AutomationRule& rule);
  void removeClicked();
  /// It has opened for the first time.
  void contentAdded();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void addHeader();
  void addContent();
  void addField(const QString& label, const QString& name, std::string AutomationRule::*text);
  void addToggle(const QString& label, const QString& name, bool AutomationRule::*state);
  void addPicker();
  void addRemoveButton();
  /// A row that is seen while the group is open.
  void addRow(QWidget* content);
  void follow(QLineEdit& field, std::string AutomationRule::*text);
  void follow(QCheckBox& toggle, bool AutomationRule::*state);

  AutomationRule rule_;
  std::vector<std::string> projects_;
  SymbolButton* opener_;
  QLineEdit* name_;
  QVBoxLayout* rows_;
  std::vector<QWidget*> content_;
  std::vector<std::function<void()>> shows_;  ///< each brings a control in line with the rule
};

}  // namespace Nimbrel
