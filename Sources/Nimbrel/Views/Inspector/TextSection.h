#pragma once

#include "Views/Inspector/FindBar.h"
#include "Views/Inspector/ShotSection.h"
#include "Views/Inspector/TextScroller.h"

namespace Nimbrel {

/// The recognised text, in which the user can look for words; or that there is none, or none yet.
class TextSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit TextSection(const InspectorContext& context);

 protected:
  void fill(const Shot& shot) override;

 private:
  QWidget* waitingRow();
  QWidget* textColumn();
  void showText(const std::string& text);
  void showMatches();

  LinkButton* copyAll_;
  QWidget* waiting_;
  QLabel* none_;
  FindBar* find_;
  QLabel* count_;
  TextScroller* scroller_;
  QWidget* text_;
  std::string shown_;  ///< what the scroller holds, as it came
};

}  // namespace Nimbrel
