#pragma once

#include "Views/Shared/SheetDialog.h"

#include <string>

namespace Nimbrel {

/// What is new in a release, and what to do about it. Its download is there and verified, and nothing happens to it
/// unless the user says so. Deletes itself when it has closed.
class UpdateView final : public SheetDialog {
  Q_OBJECT

 public:
  struct Release {
    std::string version;  ///< numbers and dots
    std::string running;  ///< that the user has
    std::string notes;    ///< HTML, of which the plain text is shown
  };

  UpdateView(const Release& release, QWidget* parent);

 Q_SIGNALS:
  void saveRequested();
  void skipRequested();

 private:
  void addWords(const Release& release);
  void addNotes(const std::string& notes);
  void addButtons();
};

}  // namespace Nimbrel
