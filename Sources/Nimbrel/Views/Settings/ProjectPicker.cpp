#include "Views/Settings/ProjectPicker.h"

#include "Views/Shared/ShotWords.h"

#include <QWheelEvent>

#include <algorithm>
#include <cstddef>

namespace Nimbrel {

ProjectPicker::ProjectPicker(QWidget* parent) : QComboBox(parent) {
  addItem(tr("None"));
  connect(this, &QComboBox::activated, this, [this](int index) {
    Q_EMIT projectChosen(index <= 0 ? std::string() : projects_[static_cast<std::size_t>(index) - 1]);
  });
}

void ProjectPicker::setChoice(const std::vector<std::string>& projects, const std::string& chosen) {
  if (projects != projects_) {
    projects_ = projects;
    while (count() > 1) removeItem(count() - 1);
    for (const auto& project : projects_) addItem(shownText(project));
  }
  const auto found = std::ranges::find(projects_, chosen);
  setPlaceholderText(shownText(chosen));
  if (chosen.empty()) {
    setCurrentIndex(0);
  } else {
    setCurrentIndex(found == projects_.end() ? -1 : static_cast<int>(found - projects_.begin()) + 1);
  }
}

void ProjectPicker::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace Nimbrel
