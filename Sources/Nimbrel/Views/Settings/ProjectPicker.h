#pragma once

#include <QComboBox>

#include <string>
#include <vector>

namespace Nimbrel {

/// A picker of one of the projects or none. The wheel turns the form that it stands in, and never the choice.
class ProjectPicker final : public QComboBox {
  Q_OBJECT

 public:
  explicit ProjectPicker(QWidget* parent = nullptr);

  /// What can be chosen, and what is. A project that is not among them is named while nothing else is chosen.
  void setChoice(const std::vector<std::string>& projects, const std::string& chosen);

 Q_SIGNALS:
  /// The user has chosen that one; empty for none.
  void projectChosen(const std::string& project);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  std::vector<std::string> projects_;
};

}  // namespace Nimbrel
