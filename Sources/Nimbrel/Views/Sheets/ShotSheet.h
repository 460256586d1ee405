#pragma once

#include "Views/Shared/GroupedForm.h"
#include "Views/Shared/Placeholder.h"
#include "Views/Shared/SheetDialog.h"
#include "Views/Shared/TextStyles.h"

#include <QLabel>
#include <QStackedWidget>

namespace Nimbrel {

/// What the sheets over the catalogue have in common: a fixed width, words under the heading, a place that shows a list
/// or why it is empty, and a line at the beginning of the footer. Deletes itself when it has closed.
class ShotSheet : public SheetDialog {
  Q_OBJECT

 protected:
  ShotSheet(const QString& heading, int width, QWidget* parent);

  void addWords(const QString& words);
  /// The form's margins become those of the sheet.
  void addForm(GroupedForm* form);
  /// Words about the form above.
  void addNote(const QString& words);
  /// Of that height, so that the sheet keeps its size whatever it shows.
  void addPlace(QWidget* list, Placeholder* placeholder, int height);
  void showPlaceholder(bool isEmpty);
  void setFooterText(const QString& text);

 private:
  QLabel* addLabel(const QString& text, TextStyle style);

  int contentWidth_;
  GroupedForm* form_ = nullptr;  ///< the last that was added
  QStackedWidget* place_ = nullptr;
  QLabel* footerText_;
};

}  // namespace Nimbrel
